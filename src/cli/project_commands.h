#pragma once
// `vimbo dump` and `vimbo build`: project files to JSON and back; `vimbo
// publish`: a project to a movie.
namespace CLI {
class App;
}

/// `vimbo dump FILE` prints a project (.vmb or .json) as JSON on stdout.
void VimboAddDumpCommand(CLI::App& app);
/// `vimbo build FILE.json -o FILE.vmb [--force]` writes a project file.
void VimboAddBuildCommand(CLI::App& app);
/// `vimbo publish [PROJECT] -o OUT.swf [--html] [--open] [--force]`.
void VimboAddPublishCommand(CLI::App& app);
