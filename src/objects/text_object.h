#pragma once
#include <memory>

#include "objects/object.h"
#include "platform/zo_colour.h"
#include "text/rich_text.h"

class TeskTextOutlines;

/// A block of rich text laid out on a page the size of the movie, on a
/// solid background colour or none. Whole, it becomes SWF text that the
/// player renders with the movie's fonts; as mesh pieces, the characters'
/// outlines are cut by each triangle.
class TeskTextObject : public TeskObject {
  public:
    /// The background colour that means "no background".
    static constexpr COLORREF kTransparent = 0xFFFFFFFF;
    /// The face and size typing starts in.
    static constexpr const char* kTypingFont = "Arial";
    static constexpr int32_t kTypingPointSize = 18;
    /// The page until the owner gives the movie's size (the player's default).
    static constexpr ZoSize kDefaultPage{640, 480};

    /// An empty text whose typing style is kTypingFont at kTypingPointSize in
    /// a colour that stands out on `movieBackground`: each of red, green and
    /// blue full where the background's is below half, else zero.
    explicit TeskTextObject(COLORREF movieBackground = 0xFFFFFF);
    /// A deep copy: the document is copied, the outlines are not.
    TeskTextObject(const TeskTextObject& other);
    ~TeskTextObject() override;

    ZoRichText& GetRichText() noexcept { return *richText_; }
    const ZoRichText& GetRichText() const noexcept { return *richText_; }
    COLORREF GetBackColour() const noexcept { return backColour_; }
    void SetBackColour(COLORREF colour) noexcept { backColour_ = colour; }
    ZoVerticalAlignment GetVerticalAlignment() const noexcept;
    void SetVerticalAlignment(ZoVerticalAlignment alignment) noexcept;
    /// The page the text wraps in: the movie's size in pixels. Making shapes
    /// sets it from the object rectangle.
    void SetPageSize(ZoSize pixels) noexcept;

    ZoAutoPtr<TeskObject> Clone() const override;
    /// Start and end a run of pieces. The glyph outlines that pieces are cut
    /// from are built by the first piece, for its object rectangle, and kept
    /// until ReleaseOutput or a piece for another rectangle.
    void PrepareOutput() override;
    void ReleaseOutput() override;
    bool CanFillPieces() const override { return true; }
    /// The background clipped to the triangle, then the parts of the
    /// characters inside the triangle (not clipped to `objectRect`).
    ZoAutoInterface2<ZoFlash::ZoSWFShape> MakeTriangleShape(TeskSWFMovie& movie,
                                                            const ZoRect& objectRect,
                                                            const TeskTriangle& triangle) override;
    /// The SWF text itself, or a sprite holding the background (depth 1),
    /// the text (2) and its underlines and bullets (3).
    ZoAutoInterface2<ZoFlash::ZoSWFObject> MakeShape(TeskSWFMovie& movie,
                                                     const ZoRect& objectRect) override;
    /// The laid-out text's extent: widest line and bottom of the last one.
    bool GetNaturalSize(ZoSize& size) const override;
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;
    void VisitFields(TeskFieldVisitor& visitor) override;

  private:
    /// Lays the page out for `objectRect`.
    void FitPage(const ZoRect& objectRect);
    /// Replaces the document with an empty one in its default style, on the same page.
    void ResetDocument();
    const TeskTextOutlines& OutlinesFor(const ZoRect& objectRect);

    std::shared_ptr<ZoRichText> richText_;
    COLORREF backColour_ = kTransparent;
    std::unique_ptr<TeskTextOutlines> outlines_;
};
