#include "objects/text_object.h"

#include "flash/swf_shape.h"
#include "flash/swf_sprite.h"
#include "flash/swf_text.h"
#include "media/swf_movie.h"
#include "media/swf_resource_manager.h"
#include "objects/field_visitor.h"
#include "objects/system_glyph_source.h"
#include "objects/text_glyph_walk.h"
#include "objects/text_outlines.h"
#include "objects/triangle_piece.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"
#include "platform/zo_units.h"
#include "text/code_page.h"

namespace {

using ZoFlash::ZoSWFColour;
using ZoFlash::ZoSWFObject;
using ZoFlash::ZoSWFShape;
using ZoFlash::ZoSWFText;

COLORREF ContrastingColour(COLORREF background) noexcept {
    const auto full = [](uint8_t channel) -> uint8_t { return channel < 128 ? 255 : 0; };
    return ZoRGB(full(ZoGetRed(background)), full(ZoGetGreen(background)),
                 full(ZoGetBlue(background)));
}

ZoVerticalAlignment AlignmentFromCode(int32_t code) noexcept {
    const bool known = code >= static_cast<int32_t>(ZoVerticalAlignment::Top) &&
                       code <= static_cast<int32_t>(ZoVerticalAlignment::Justify);
    return known ? static_cast<ZoVerticalAlignment>(code) : ZoVerticalAlignment::Top;
}

// RTF carries Windows-1252 bytes, JSON carries UTF-8: the JSON form is the
// same RTF with its bytes decoded, and characters the code page lacks go
// back as RTF's Unicode escape.
ZoString RtfToUtf8(std::string_view rtf) {
    ZoString text;
    text.reserve(rtf.size());
    for (const char byte : rtf)
        ZoAppendUtf8(text, ZoCp1252ToUnicode(static_cast<uint8_t>(byte)));
    return text;
}

ZoString Utf8ToRtf(std::string_view text) {
    ZoString rtf;
    rtf.reserve(text.size());
    for (size_t offset = 0; offset < text.size();) {
        const char32_t character = ZoNextUtf8(text, offset);
        if (const auto byte = ZoUnicodeToCp1252(character)) {
            rtf += static_cast<char>(*byte);
            continue;
        }
        // \u takes a signed 16-bit unit: beyond the basic plane, a pair.
        const char32_t value = character - 0x10000;
        const auto units = character > 0xFFFF ? std::vector<char32_t>{0xD800 + (value >> 10),
                                                                      0xDC00 + (value & 0x3FF)}
                                              : std::vector<char32_t>{character};
        for (const char32_t unit : units)
            rtf += ZoFormat("\\u%d?", static_cast<int16_t>(static_cast<uint16_t>(unit)));
    }
    return rtf;
}

/// Writes laid-out lines into an SWF text, starting a text record with a
/// new font wherever the look of the text changes.
class SwfTextBuilder {
  public:
    SwfTextBuilder(TeskSWFMovie& movie, ZoSWFText& text) : movie_(movie), text_(text) {}

    void AddLines(const std::vector<ZoTextLine>& lines, const ZoRect& objectRect) {
        TeskForEachItem(
            lines, objectRect,
            [this](const ZoTextItem& item, const TeskItemStart& start) { AddItem(item, start); });
    }

  private:
    void AddItem(const ZoTextItem& item, const TeskItemStart& start) {
        StartRecord(item, start.pen);
        if (start.bullet)
            text_.DrawBullet(*start.bullet, ZoSWFColour(item.format->Colour(), 255));
        TeskForEachGlyph(item, [&](char32_t character, int32_t advance) {
            // SWF 5 fonts are indexed by Windows-1252 code.
            const uint8_t code = ZoUnicodeToCp1252(character).value_or('?');
            text_.AddCharacter(static_cast<char>(code), advance);
        });
    }

    void StartRecord(const ZoTextItem& item, ZoPoint pen) {
        if (format_ && format_->SameAppearance(*item.format)) {
            text_.MovePosition(pen.x, pen.y);
            return;
        }
        format_ = item.format;
        auto font = movie_.GetResourceManager().GetFont(format_->FontName(), format_->IsBold(),
                                                        format_->IsItalic());
        font->SetGlyphSource(TeskSystemGlyphSource::Shared());
        // Underlines take the text's colour, as the mesh pieces draw them.
        const ZoSWFColour colour(format_->Colour(), 255);
        text_.SetFont(font, ZoPixelsToTwips(item.font->PixelSize()), format_->IsUnderlined(),
                      colour, colour, pen.x, pen.y);
    }

    TeskSWFMovie& movie_;
    ZoSWFText& text_;
    std::shared_ptr<const ZoTextFormat> format_;
};

// The bottom of the last line, in twips.
int32_t TextBottom(const std::vector<ZoTextLine>& lines, const ZoRect& objectRect) noexcept {
    return lines.empty()
               ? objectRect.top
               : objectRect.top + ZoPixelsToTwips(lines.back().top + lines.back().Height());
}

ZoAutoInterface2<ZoFlash::ZoSWFSprite> Layered(const ZoAutoInterface2<ZoSWFObject>& back,
                                               const ZoAutoInterface2<ZoSWFObject>& text,
                                               const ZoAutoInterface2<ZoSWFObject>& decoration) {
    auto sprite = ZoMakeCounted<ZoFlash::ZoSWFSprite>();
    ZoFlash::ZoSWFFrame& frame = *sprite->AddFrame();
    int depth = 1;
    for (const auto& layer : {back, text, decoration}) {
        if (layer) {
            frame.PlaceObject(layer, nullptr, depth, ZoFlash::ZoSWFTransformation(), 0, -1,
                              ZoFlash::ZoSWFColourTransformation());
        }
        ++depth;
    }
    return sprite;
}

}  // namespace

TeskTextObject::TeskTextObject(COLORREF movieBackground)
    : TeskObject(kTeskTextObject), richText_(std::make_shared<ZoRichText>()) {
    SetPageSize(kDefaultPage);
    const COLORREF colour = ContrastingColour(movieBackground);
    richText_->ModifyFormat(0, richText_->Length(), [colour](ZoTextFormat& format) {
        format.SetFontName(kTypingFont);
        format.SetPointSize(kTypingPointSize);
        format.SetColour(colour);
    });
}

TeskTextObject::TeskTextObject(const TeskTextObject& other)
    : TeskObject(other),
      richText_(std::make_shared<ZoRichText>(*other.richText_)),
      backColour_(other.backColour_) {}

TeskTextObject::~TeskTextObject() = default;

ZoVerticalAlignment TeskTextObject::GetVerticalAlignment() const noexcept {
    return richText_->LayoutSettings().verticalAlignment;
}

void TeskTextObject::SetVerticalAlignment(ZoVerticalAlignment alignment) noexcept {
    richText_->SetVerticalAlignment(alignment);
}

void TeskTextObject::SetPageSize(ZoSize pixels) noexcept {
    const ZoTextLayoutSettings& settings = richText_->LayoutSettings();
    // Setting the page lays the text out again; most calls change nothing.
    if (settings.pageWidth != pixels.cx || settings.pageHeight != pixels.cy)
        richText_->SetPageSize(pixels.cx, pixels.cy);
}

void TeskTextObject::FitPage(const ZoRect& objectRect) {
    SetPageSize({objectRect.Width() / kZoTwipsPerPixel, objectRect.Height() / kZoTwipsPerPixel});
}

void TeskTextObject::ResetDocument() {
    const ZoTextLayoutSettings& settings = richText_->LayoutSettings();
    auto fresh = std::make_shared<ZoRichText>(settings.logPixels);
    fresh->SetPageSize(settings.pageWidth, settings.pageHeight);
    richText_ = std::move(fresh);
    outlines_.reset();
}

ZoAutoPtr<TeskObject> TeskTextObject::Clone() const {
    return std::make_unique<TeskTextObject>(*this);
}

void TeskTextObject::PrepareOutput() {
    // Only the first piece knows the rectangle, and so the page the text
    // wraps in: the outlines are built there.
    outlines_.reset();
}

void TeskTextObject::ReleaseOutput() {
    outlines_.reset();
}

const TeskTextOutlines& TeskTextObject::OutlinesFor(const ZoRect& objectRect) {
    if (!outlines_ || outlines_->GetObjectRect() != objectRect) {
        FitPage(objectRect);
        outlines_ = std::make_unique<TeskTextOutlines>(richText_->Lines(), objectRect);
    }
    return *outlines_;
}

ZoAutoInterface2<ZoSWFShape> TeskTextObject::MakeTriangleShape(TeskSWFMovie&,
                                                               const ZoRect& objectRect,
                                                               const TeskTriangle& triangle) {
    auto shape = ZoMakeCounted<ZoSWFShape>();
    std::optional<COLORREF> fill;
    if (backColour_ != kTransparent) {
        shape->SetSolidFill(backColour_, 255);
        TeskOutlineTrianglePiece(*shape, objectRect, triangle);
        fill = backColour_;
    }
    OutlinesFor(objectRect).AddPiece(*shape, triangle, fill);
    return shape;
}

ZoAutoInterface2<ZoSWFObject> TeskTextObject::MakeShape(TeskSWFMovie& movie,
                                                        const ZoRect& objectRect) {
    FitPage(objectRect);
    auto text = ZoMakeCounted<ZoSWFText>();
    const std::vector<ZoTextLine>& lines = richText_->Lines();
    SwfTextBuilder(movie, *text).AddLines(lines, objectRect);
    text->SetRect(
        {objectRect.left, objectRect.top, objectRect.right, TextBottom(lines, objectRect)});
    ZoAutoInterface2<ZoSWFShape> decoration = text->GetDecorationShape();
    if (backColour_ == kTransparent && !decoration)
        return text;
    ZoAutoInterface2<ZoSWFShape> back;
    if (backColour_ != kTransparent) {
        back = ZoMakeCounted<ZoSWFShape>();
        back->SetSolidFill(backColour_, 255);
        back->Rectangle(objectRect);
    }
    return Layered(back, text, decoration);
}

bool TeskTextObject::GetNaturalSize(ZoSize& size) const {
    size = ZoLaidOutSize(richText_->Lines());
    return size.cx != 0;
}

void TeskTextObject::Read(ZoFolderFile& file) {
    ZoString rtf;
    COLORREF backColour = kTransparent;
    int32_t alignment = 0;
    try {
        ZoFolderGuard record(file, false);
        file.ReadString(rtf);
        backColour = file.ReadUInt32();
        alignment = file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
        ResetDocument();
        backColour_ = kTransparent;
        return;
    }
    ResetDocument();
    richText_->SetRTF(rtf);
    backColour_ = backColour;
    SetVerticalAlignment(AlignmentFromCode(alignment));
}

void TeskTextObject::Write(ZoFolderFile& file) const {
    ZoFolderGuard record(file, true);
    ZoString rtf;
    richText_->GetRTF(rtf);
    file.WriteString(rtf);
    file.WriteUInt32(backColour_);
    file.WriteInt32(static_cast<int32_t>(GetVerticalAlignment()));
}

void TeskTextObject::VisitFields(TeskFieldVisitor& visitor) {
    ZoString rtf;
    richText_->GetRTF(rtf);
    const ZoString stored = RtfToUtf8(rtf);
    ZoString text = stored;
    auto alignment = static_cast<int32_t>(GetVerticalAlignment());
    visitor.Field("richText", text);
    visitor.Colour("backColour", backColour_);
    visitor.Field("verticalAlignment", alignment);
    if (!visitor.IsReading())
        return;
    if (text != stored) {
        ResetDocument();
        richText_->SetRTF(Utf8ToRtf(text));
    }
    SetVerticalAlignment(AlignmentFromCode(alignment));
}
