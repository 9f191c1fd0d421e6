#pragma once
// The editor's entry point, free of Qt so that main() can reach it.
#include <string>

/// Runs the editor until its window closes, on `projectFile` when it is not
/// empty. `argc` and `argv` are the program's own (the windowing system may
/// read options from them). Returns the exit code; without a display it
/// explains that on stderr and fails.
int TeskRunEditor(int& argc, char** argv, const std::string& projectFile);
