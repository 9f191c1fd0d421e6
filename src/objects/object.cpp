#include "objects/object.h"

#include <optional>

#include "objects/graduated_object.h"
#include "objects/image_object.h"
#include "objects/solid_object.h"
#include "objects/text_object.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

namespace {

/// Stands for a kind code that could not be read.
constexpr int32_t kUnreadableKind = -1;

/// The object a stored kind code stands for, with its defaults; null for
/// codes that carry no object (3 and 4). Unknown codes, and kinds this build
/// cannot make, fall back to the default picture so that a damaged or newer
/// file still opens with something the user can replace.
ZoAutoPtr<TeskObject> MakeDefaultObject(int32_t kind) {
    switch (kind) {
        case kTeskGraduatedObject:
            return std::make_unique<TeskGraduatedObject>();
        case kTeskSolidObject:
            return std::make_unique<TeskSolidObject>();
        case kTeskTextObject:
            return std::make_unique<TeskTextObject>();
        case kTeskKeepObject:
        case kTeskNoObject:
            return nullptr;
        default:
            return std::make_unique<TeskImageObject>();
    }
}

bool ReadsItsRecord(int32_t kind) noexcept {
    return kind == kTeskImageObject || kind == kTeskGraduatedObject || kind == kTeskSolidObject ||
           kind == kTeskTextObject;
}

}  // namespace

void WriteObject(ZoFolderFile& file, const TeskObject* object) {
    ZoFolderGuard folder(file, true);
    file.WriteInt32(object ? object->GetType() : kTeskNoObject);
    if (object)
        object->Write(file);
}

void ReadObject(ZoFolderFile& file, ZoAutoPtr<TeskObject>& holder) {
    std::optional<ZoFolderGuard> folder;
    try {
        folder.emplace(file, false);
    } catch (const ZoFileNonFatalException&) {
        holder = MakeDefaultObject(kUnreadableKind);
        return;
    }
    int32_t kind = kUnreadableKind;
    try {
        kind = file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
    }
    if (kind == kTeskKeepObject) {
        if (holder)
            holder->Read(file);
        return;
    }
    holder = MakeDefaultObject(kind);
    if (holder && ReadsItsRecord(kind))
        holder->Read(file);
}
