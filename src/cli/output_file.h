#pragma once
// What the commands that write one file share.
#include <string>

/// Throws ZoException with one line when `path` exists and `force` is not
/// set, before any work is done.
void VimboRefuseToReplace(const std::string& path, bool force);
