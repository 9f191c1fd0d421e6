#pragma once
#include <functional>
#include <string>
#include <vector>

/// What `vimbo` does when it is given no command: open the editor on an
/// optional project file. Returns the process exit code.
using VimboEditorLauncher = std::function<int(const std::string& projectFile)>;

/// Exit codes of every command.
enum VimboExitCode : int {
    kVimboExitSuccess = 0,
    kVimboExitFailure = 1,  // bad input or a failed operation: one line on stderr
    kVimboExitUsage = 2,    // the command line itself was wrong
};

/// Runs `vimbo` with its arguments (argv[0] included). With no command it
/// calls `launchEditor` when one is given, and prints the help otherwise.
int VimboRunCommandLine(const std::vector<std::string>& arguments,
                        const VimboEditorLauncher& launchEditor);
