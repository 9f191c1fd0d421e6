#pragma once
// An object is the picture an effect shows or animates. Objects never place
// themselves in a movie: an effect asks them for SWF shapes in its own
// coordinate space (twips, y down) and places those frame by frame.
#include <array>
#include <cstdint>

#include "platform/zo_auto_ptr.h"
#include "platform/zo_rect.h"
#include "platform/zo_reference.h"

namespace ZoFlash {
class ZoSWFObject;
class ZoSWFShape;
}  // namespace ZoFlash
class TeskSWFMovie;
class TeskFieldVisitor;
class ZoFolderFile;

/// Kind codes, as stored at the head of every object record.
enum TeskObjectKind : int32_t {
    kTeskImageObject = 0,
    kTeskGraduatedObject = 1,
    kTeskTextObject = 2,
    kTeskKeepObject = 3,  // never written; on reading keeps the holder's object
    kTeskNoObject = 4,
    kTeskSolidObject = 5,
};

/// A mesh triangle in object-rectangle coordinates (twips).
using TeskTriangle = std::array<ZoPoint, 3>;

/// The abstract object: an image, rich text, a solid or a graduated colour.
class TeskObject {
  public:
    explicit TeskObject(int32_t type) noexcept : type_(type) {}
    TeskObject(const TeskObject&) = default;
    TeskObject& operator=(const TeskObject&) = delete;
    virtual ~TeskObject() = default;

    /// The kind code, fixed by each kind's constructor.
    int32_t GetType() const noexcept { return type_; }

    /// A heap copy of the same kind and values.
    virtual ZoAutoPtr<TeskObject> Clone() const = 0;
    /// Called once before a mesh effect asks for pieces (text builds its
    /// glyph outlines here) and once when it has finished.
    virtual void PrepareOutput() {}
    virtual void ReleaseOutput() {}
    /// Whether MakeTriangleShape may be used; every kind answers true.
    virtual bool CanFillPieces() const = 0;
    /// A shape filling `triangle` (clipped to `objectRect`) with the object's fill.
    virtual ZoAutoInterface2<ZoFlash::ZoSWFShape> MakeTriangleShape(
        TeskSWFMovie& movie, const ZoRect& objectRect, const TeskTriangle& triangle) = 0;
    /// A character showing the whole object in `objectRect`: a shape, or
    /// for text a text character or a sprite holding one.
    virtual ZoAutoInterface2<ZoFlash::ZoSWFObject> MakeShape(TeskSWFMovie& movie,
                                                             const ZoRect& objectRect) = 0;
    /// The object's own size in pixels, if it has one.
    virtual bool GetNaturalSize(ZoSize& size) const = 0;
    /// The object's own record, inside the object's folder.
    virtual void Read(ZoFolderFile& file) = 0;
    virtual void Write(ZoFolderFile& file) const = 0;
    /// Every stored field by its code name (JSON projects, dumps, tests).
    virtual void VisitFields(TeskFieldVisitor& visitor) = 0;

  private:
    int32_t type_;
};

/// Writes an object slot: one unnamed folder holding the kind code (4 for an
/// empty holder) and the object's own record.
void WriteObject(ZoFolderFile& file, const TeskObject* object);

/// Reads an object slot into `holder` (see the kind codes for what an
/// unknown or unreadable code gives).
void ReadObject(ZoFolderFile& file, ZoAutoPtr<TeskObject>& holder);
