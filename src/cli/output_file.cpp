#include "cli/output_file.h"

#include <filesystem>

#include "platform/zo_exception.h"
#include "platform/zo_string.h"

void VimboRefuseToReplace(const std::string& path, bool force) {
    std::error_code error;
    if (!force && std::filesystem::exists(path, error))
        throw ZoException(ZoFormat("'%s' already exists; use --force to replace it", path.c_str()));
}
