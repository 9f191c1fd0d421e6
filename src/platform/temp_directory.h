#pragma once
#include <filesystem>

#include "platform/zo_string.h"

/// The process's own temporary folder (created on first use under the
/// system's temporary directory and removed with its contents when the
/// process exits normally).
const std::filesystem::path& ZoProcessTempDirectory();

/// A fresh file name inside ZoProcessTempDirectory() ending in `extension`
/// (".swf"); the file itself is not created. Names never repeat within a run.
std::filesystem::path ZoMakeTempFileName(std::string_view extension);
