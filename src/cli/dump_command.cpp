#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/project_commands.h"
#include "document/json_project.h"
#include "effects/register_effects.h"

namespace {

struct DumpOptions {
    std::string project;
};

void RunDump(const DumpOptions& options) {
    TeskRegisterEffects();
    TeskFile document;
    TeskLoadProjectFile(document, options.project);
    std::cout << TeskDocumentToJson(document) << std::flush;
}

}  // namespace

void VimboAddDumpCommand(CLI::App& app) {
    auto options = std::make_shared<DumpOptions>();
    CLI::App* command = app.add_subcommand("dump", "Print a project (.vmb or .json) as JSON");
    command->add_option("project", options->project, "Project file to print")->required();
    command->callback([options] { RunDump(*options); });
}
