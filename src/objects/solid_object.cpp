#include "objects/solid_object.h"

#include "flash/swf_shape.h"
#include "objects/field_visitor.h"
#include "objects/triangle_piece.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

ZoAutoPtr<TeskObject> TeskSolidObject::Clone() const {
    return std::make_unique<TeskSolidObject>(colour_);
}

ZoAutoInterface2<ZoFlash::ZoSWFShape> TeskSolidObject::MakeFill() const {
    auto shape = ZoMakeCounted<ZoFlash::ZoSWFShape>();
    shape->SetSolidFill(colour_, 255);
    return shape;
}

ZoAutoInterface2<ZoFlash::ZoSWFObject> TeskSolidObject::MakeShape(TeskSWFMovie&,
                                                                  const ZoRect& objectRect) {
    auto shape = MakeFill();
    shape->Rectangle(objectRect);
    return shape;
}

ZoAutoInterface2<ZoFlash::ZoSWFShape> TeskSolidObject::MakeTriangleShape(
    TeskSWFMovie&, const ZoRect& objectRect, const TeskTriangle& triangle) {
    auto shape = MakeFill();
    TeskOutlineTrianglePiece(*shape, objectRect, triangle);
    return shape;
}

bool TeskSolidObject::GetNaturalSize(ZoSize& size) const {
    size = {};
    return false;
}

void TeskSolidObject::Read(ZoFolderFile& file) {
    try {
        ZoFolderGuard record(file, false);
        colour_ = file.ReadUInt32();
    } catch (const ZoFileNonFatalException&) {
        colour_ = kDefaultColour;
    }
}

void TeskSolidObject::Write(ZoFolderFile& file) const {
    ZoFolderGuard record(file, true);
    file.WriteUInt32(colour_);
}

void TeskSolidObject::VisitFields(TeskFieldVisitor& visitor) {
    visitor.Colour("colour", colour_);
}
