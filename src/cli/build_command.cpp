#include <CLI/CLI.hpp>

#include "cli/output_file.h"
#include "cli/project_commands.h"
#include "document/json_project.h"
#include "effects/register_effects.h"
#include "platform/atomic_file.h"

namespace {

struct BuildOptions {
    std::string project;
    std::string output;
    bool force = false;
};

void RunBuild(const BuildOptions& options) {
    VimboRefuseToReplace(options.output, options.force);
    TeskRegisterEffects();
    TeskFile document;
    TeskLoadProjectFile(document, options.project);
    // Written beside the target and renamed over it: never a partial file.
    ZoWriteFileAtomically(options.output, TeskDocumentToBytes(document));
}

}  // namespace

void VimboAddBuildCommand(CLI::App& app) {
    auto options = std::make_shared<BuildOptions>();
    CLI::App* command =
        app.add_subcommand("build", "Write a project file (.vmb) from a JSON project");
    command->add_option("project", options->project, "JSON project (or project file) to read")
        ->required();
    command->add_option("-o,--output", options->output, "Project file to write")->required();
    command->add_flag("--force", options->force, "Replace the output file if it exists");
    command->callback([options] { RunBuild(*options); });
}
