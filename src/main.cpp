#include <string>
#include <vector>

#include "cli/command_line.h"
#ifdef VIMBO_EDITOR
#include "app/editor_launcher.h"
#endif

int main(int argc, char** argv) {
    VimboEditorLauncher launchEditor;
#ifdef VIMBO_EDITOR
    launchEditor = [&argc, argv](const std::string& projectFile) {
        return TeskRunEditor(argc, argv, projectFile);
    };
#endif
    return VimboRunCommandLine(std::vector<std::string>(argv, argv + argc), launchEditor);
}
