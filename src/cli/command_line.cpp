#include "cli/command_line.h"

#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/export_grid_command.h"
#include "cli/project_commands.h"
#include "cli/render_command.h"
#include "platform/zo_exception.h"

namespace {

constexpr const char* kDescription =
    "Vimbo turns a short visual transition between two objects into an SWF movie.";

int RunParsed(CLI::App& app, const std::string& projectFile,
              const VimboEditorLauncher& launchEditor) {
    if (!app.get_subcommands().empty())
        return kVimboExitSuccess;  // the command already ran
    if (launchEditor)
        return launchEditor(projectFile);
    std::cout << app.help();
    return kVimboExitSuccess;
}

}  // namespace

int VimboRunCommandLine(const std::vector<std::string>& arguments,
                        const VimboEditorLauncher& launchEditor) {
    CLI::App app{kDescription, "vimbo"};
    app.set_version_flag("--version", std::string("vimbo ") + VIMBO_VERSION);
    std::string projectFile;
    app.add_option("project", projectFile, "Project file (.vmb) to open in the editor");
    app.require_subcommand(0, 1);
    VimboAddDumpCommand(app);
    VimboAddBuildCommand(app);
    VimboAddExportGridCommand(app);
    VimboAddPublishCommand(app);
    VimboAddRenderCommand(app);

    std::vector<std::string> args(arguments.rbegin(), arguments.rend() - 1);
    try {
        app.parse(args);
        return RunParsed(app, projectFile, launchEditor);
    } catch (const CLI::Success& e) {
        return app.exit(e);
    } catch (const CLI::ParseError& e) {
        app.exit(e);
        return kVimboExitUsage;
    } catch (const std::exception& e) {
        std::cerr << "vimbo: " << e.what() << "\n";
        return kVimboExitFailure;
    }
}
