#include "media/image_path.h"

#include <filesystem>
#include <mutex>

namespace {

std::mutex projectFolderLock;
ZoString projectFolder;

/// A folder with its trailing separator, so that "/a/b" never claims "/a/bc/x.png".
ZoString WithSeparator(const ZoString& folder) {
    if (folder.empty() || folder.back() == '/')
        return folder;
    return folder + '/';
}

}  // namespace

bool TeskIsBuiltInImageName(std::string_view name) noexcept {
    return !name.empty() && name.front() == '<';
}

ZoString TeskRelativeImagePath(const ZoString& path, const ZoString& folder) {
    if (TeskIsBuiltInImageName(path) || folder.empty())
        return path;
    const ZoString prefix = WithSeparator(folder);
    if (path.size() > prefix.size() &&
        ZoToLowerAscii(std::string_view(path).substr(0, prefix.size())) == ZoToLowerAscii(prefix))
        return path.substr(prefix.size());
    return path;
}

ZoString TeskFullImagePath(const ZoString& name, const ZoString& folder) {
    if (name.empty() || TeskIsBuiltInImageName(name) || std::filesystem::path(name).is_absolute())
        return name;
    return WithSeparator(folder) + name;
}

void TeskSetProjectFolder(const ZoString& folder) {
    std::lock_guard lock(projectFolderLock);
    projectFolder = folder;
}

ZoString TeskGetProjectFolder() {
    std::lock_guard lock(projectFolderLock);
    return projectFolder;
}
