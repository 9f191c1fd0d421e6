#include "objects/image_object.h"

#include "flash/swf_shape.h"
#include "media/image_path.h"
#include "media/resource_manager.h"
#include "media/swf_movie.h"
#include "media/swf_resource_manager.h"
#include "objects/field_visitor.h"
#include "objects/image_placement.h"
#include "objects/triangle_piece.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"
#include "platform/zo_units.h"

namespace {

void WriteKey(ZoFolderFile& file, const ZoResourceKey& key) {
    ZoFolderGuard folder(file, true);
    file.WriteInt32(key.GetKind());
    if (key.UsesName())
        file.WriteString(key.GetName());
    if (key.UsesId())
        file.WriteInt32(key.GetId());
}

ZoResourceKey ReadKey(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    const int32_t kind = file.ReadInt32();
    if (kind < ZoResourceKey::kEmpty || kind > ZoResourceKey::kByNameAndId)
        return ZoResourceKey(ZoString());
    ZoResourceKey key(kind, ZoString(), ZoResourceKey::kNoId);
    ZoString name;
    if (key.UsesName())
        file.ReadString(name);
    const int32_t id = key.UsesId() ? file.ReadInt32() : ZoResourceKey::kNoId;
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

ZoAutoInterface2<ZoFlash::ZoSWFShape> TeskImageObject::MakeFill(TeskSWFMovie& movie,
                                                                ZoRect& rect) const {
    auto shape = ZoMakeCounted<ZoFlash::ZoSWFShape>();
    const auto picture = TeskGetResourceManager().GetImageResource(fileName_)->GetImage();
    const COLORREF colour = TeskEffectiveTransparentColour(picture.Get(), useTransparent_,
                                                           autoTransparent_, transparentColour_);
    const auto image = movie.GetResourceManager().GetImage(GetFullPath(), colour, tolerance_);
    if (!image)
        return shape;
    // The bitmap is placed a twip up and left of its rectangle, which keeps
    // its first row and column from showing a seam against the edge.
    if (placement_ == kTeskTiled) {
        shape->SetTiledBitmapFill(image, rect.left - 1.0, rect.top - 1.0, kZoTwipsPerPixel,
                                  kZoTwipsPerPixel);
        return shape;
    }
    int width = 0;
    int height = 0;
    image->GetSize(width, height);
    if (width <= 0 || height <= 0)
        return shape;
    const ZoRect placed = TeskPlacedRectangle(placement_, rect, width, height);
    shape->SetClippedBitmapFill(image, placed.left - 1.0, placed.top - 1.0,
                                static_cast<double>(placed.Width()) / width,
                                static_cast<double>(placed.Height()) / height);
    rect = ZoRect::Intersection(rect, placed);
    return shape;
}

ZoAutoInterface2<ZoFlash::ZoSWFObject> TeskImageObject::MakeShape(TeskSWFMovie& movie,
                                                                  const ZoRect& objectRect) {
    ZoRect covered = objectRect;
    auto shape = MakeFill(movie, covered);
    if (!covered.IsEmpty())
        shape->Rectangle(covered);
    return shape;
}

ZoAutoInterface2<ZoFlash::ZoSWFShape> TeskImageObject::MakeTriangleShape(
    TeskSWFMovie& movie, const ZoRect& objectRect, const TeskTriangle& triangle) {
    ZoRect covered = objectRect;
    auto shape = MakeFill(movie, covered);
    TeskOutlineTrianglePiece(*shape, covered, triangle);
    return shape;
}

bool TeskImageObject::GetNaturalSize(ZoSize& size) const {
    const auto picture = TeskGetResourceManager().GetImageResource(fileName_)->GetImage();
    if (!picture)
        return false;
    size = {picture->GetWidth(), picture->GetHeight()};
    return true;
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
    visitor.Colour("transparentColour", transparentColour_);
    visitor.Field("tolerance", tolerance_);
    visitor.Field("useTransparent", useTransparent_);
    visitor.Field("autoTransparent", autoTransparent_);
    visitor.Field("placement", placement_);
}
