#include <string>
#include <vector>

#include "cli/command_line.h"

int main(int argc, char** argv) {
    return VimboRunCommandLine(std::vector<std::string>(argv, argv + argc), {});
}
