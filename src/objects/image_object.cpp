#include "objects/image_object.h"

#include "media/image_path.h"
#include "objects/field_visitor.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

namespace {

void WriteKey(ZoFolderFile& file, const ZoResourceKey& key) {
    ZoFolderGuard folder(file, true);
    file.WriteInt32(key.GetKind());
    if (key.GetKind() == ZoResourceKey::kByName || key.GetKind() == ZoResourceKey::kByNameAndId)
        file.WriteString(key.GetName());
    if (key.GetKind() == ZoResourceKey::kById || key.GetKind() == ZoResourceKey::kByNameAndId)
        file.WriteInt32(key.GetId());
}

ZoResourceKey ReadKey(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    const int32_t kind = file.ReadInt32();
    ZoString name;
    int32_t id = ZoResourceKey::kNoId;
    switch (kind) {
        case ZoResourceKey::kEmpty:
            break;
        case ZoResourceKey::kByName:
            file.ReadString(name);
            break;
        case ZoResourceKey::kById:
            id = file.ReadInt32();
            break;
        case ZoResourceKey::kByNameAndId:
            file.ReadString(name);
            id = file.ReadInt32();
            break;
        default:
            return ZoResourceKey(ZoString());
    }
    return ZoResourceKey(kind, std::move(name), id);
}

int32_t ReadPlacement(ZoFolderFile& file) {
    try {
        ZoFolderGuard folder(file, false);
        return file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
        return kTeskStretch;
    }
}

}  // namespace

TeskImageObject::TeskImageObject(ZoString fileName)
    : TeskObject(kTeskImageObject), fileName_(std::move(fileName)) {}

void TeskImageObject::SetFileName(const ZoString& path) {
    fileName_ = ZoResourceKey(TeskRelativeImagePath(path, TeskGetProjectFolder()));
}

ZoString TeskImageObject::GetFullPath() const {
    return TeskFullImagePath(fileName_.GetName(), TeskGetProjectFolder());
}

ZoAutoPtr<TeskObject> TeskImageObject::Clone() const {
    return std::make_unique<TeskImageObject>(*this);
}

void TeskImageObject::Read(ZoFolderFile& file) {
    placement_ = kTeskStretch;
    try {
        ZoFolderGuard record(file, false);
        fileName_ = ReadKey(file);
        transparentColour_ = file.ReadUInt32();
        tolerance_ = file.ReadInt32();
        useTransparent_ = file.ReadBool();
        autoTransparent_ = file.ReadBool();
        placement_ = ReadPlacement(file);
    } catch (const ZoFileNonFatalException&) {
        transparentColour_ = 0;
        tolerance_ = 0;
        useTransparent_ = false;
        autoTransparent_ = false;
    }
}

void TeskImageObject::Write(ZoFolderFile& file) const {
    ZoFolderGuard record(file, true);
    WriteKey(file, fileName_);
    file.WriteUInt32(transparentColour_);
    file.WriteInt32(tolerance_);
    file.WriteBool(useTransparent_);
    file.WriteBool(autoTransparent_);
    ZoFolderGuard placement(file, true);
    file.WriteInt32(placement_);
}

void TeskImageObject::VisitFields(TeskFieldVisitor& visitor) {
    ZoString name = fileName_.GetName();
    visitor.Field("fileName", name);
    if (visitor.IsReading())
        fileName_ = ZoResourceKey(std::move(name));
    visitor.Field("transparentColour", transparentColour_);
    visitor.Field("tolerance", tolerance_);
    visitor.Field("useTransparent", useTransparent_);
    visitor.Field("autoTransparent", autoTransparent_);
    visitor.Field("placement", placement_);
}
