#include "platform/font_face.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include FT_ADVANCES_H
#include FT_TRUETYPE_TABLES_H

#include <algorithm>

#include "platform/zo_exception.h"

namespace {

constexpr int32_t kMaxPixelSize = 16384;

// One library for the process; FreeType allows sharing it only when every
// call that touches it or its faces is serialised. The mutex is never
// destroyed, because cached faces are freed by other static destructors.
std::mutex& FreeTypeMutex() {
    static auto* mutex = new std::mutex;
    return *mutex;
}

FT_Library FreeTypeLibrary() {
    static FT_Library library = [] {
        FT_Library created = nullptr;
        if (FT_Init_FreeType(&created) != 0) {
            throw ZoException("The font engine could not be started.");
        }
        return created;
    }();
    return library;
}

int32_t RoundedScale(int64_t units, int32_t pixels, int32_t unitsPerEm) {
    if (unitsPerEm <= 0) {
        return 0;
    }
    return static_cast<int32_t>((units * pixels + unitsPerEm / 2) / unitsPerEm);
}

ZoGlyphPoint ToPoint(const FT_Vector* v) {
    return {static_cast<int32_t>(v->x), static_cast<int32_t>(v->y)};
}

struct OutlineSink {
    ZoGlyphOutline segments;
    ZoGlyphPoint current;
};

int MoveTo(const FT_Vector* to, void* user) {
    auto* sink = static_cast<OutlineSink*>(user);
    sink->current = ToPoint(to);
    sink->segments.push_back({ZoGlyphSegmentKind::Move, {}, sink->current});
    return 0;
}

int LineTo(const FT_Vector* to, void* user) {
    auto* sink = static_cast<OutlineSink*>(user);
    sink->current = ToPoint(to);
    sink->segments.push_back({ZoGlyphSegmentKind::Line, {}, sink->current});
    return 0;
}

int ConicTo(const FT_Vector* control, const FT_Vector* to, void* user) {
    auto* sink = static_cast<OutlineSink*>(user);
    sink->current = ToPoint(to);
    sink->segments.push_back({ZoGlyphSegmentKind::Quadratic, ToPoint(control), sink->current});
    return 0;
}

// Only PostScript-flavoured faces have cubics. One quadratic whose control
// point is the average of the two cubic handles' extrapolations is close
// enough at text sizes and keeps callers to a single curve kind.
int CubicTo(const FT_Vector* c1, const FT_Vector* c2, const FT_Vector* to, void* user) {
    auto* sink = static_cast<OutlineSink*>(user);
    const ZoGlyphPoint p0 = sink->current;
    const ZoGlyphPoint p3 = ToPoint(to);
    const ZoGlyphPoint control{
        static_cast<int32_t>((3 * (int64_t{c1->x} + c2->x) - p0.x - p3.x) / 4),
        static_cast<int32_t>((3 * (int64_t{c1->y} + c2->y) - p0.y - p3.y) / 4)};
    sink->current = p3;
    sink->segments.push_back({ZoGlyphSegmentKind::Quadratic, control, p3});
    return 0;
}

}  // namespace

struct ZoFontFace::FreeTypeFace {
    FT_Face face = nullptr;
};

ZoFontFace::ZoFontFace(const ZoString& path, int32_t index)
    : path_(path), face_(std::make_unique<FreeTypeFace>()) {
    std::lock_guard lock(FreeTypeMutex());
    if (FT_New_Face(FreeTypeLibrary(), path.c_str(), index, &face_->face) != 0) {
        throw ZoException(ZoFormat("The font file '%s' could not be read.", path.c_str()));
    }
    const FT_Face face = face_->face;
    family_ = face->family_name ? face->family_name : "";
    bold_ = (face->style_flags & FT_STYLE_FLAG_BOLD) != 0;
    italic_ = (face->style_flags & FT_STYLE_FLAG_ITALIC) != 0;
    unitsPerEm_ = face->units_per_EM;
    underlinePosition_ = face->underline_position;
    underlineThickness_ = face->underline_thickness;
    const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    if (os2 != nullptr && os2->version != 0xFFFF) {
        ascent_ = os2->usWinAscent;
        descent_ = os2->usWinDescent;
    } else {
        ascent_ = face->ascender;
        descent_ = -face->descender;
    }
}

ZoFontFace::~ZoFontFace() {
    std::lock_guard lock(FreeTypeMutex());
    FT_Done_Face(face_->face);
}

bool ZoFontFace::HasGlyph(char32_t character) const {
    std::lock_guard lock(FreeTypeMutex());
    return FT_Get_Char_Index(face_->face, character) != 0;
}

int32_t ZoFontFace::AdvanceUnits(char32_t character) const {
    std::lock_guard lock(FreeTypeMutex());
    const FT_UInt glyph = FT_Get_Char_Index(face_->face, character);
    FT_Fixed advance = 0;
    if (glyph == 0 || FT_Get_Advance(face_->face, glyph, FT_LOAD_NO_SCALE, &advance) != 0) {
        return 0;
    }
    return static_cast<int32_t>(advance);
}

ZoGlyphOutline ZoFontFace::Outline(char32_t character) const {
    std::lock_guard lock(FreeTypeMutex());
    const FT_Face face = face_->face;
    const FT_UInt glyph = FT_Get_Char_Index(face, character);
    if (glyph == 0 || FT_Load_Glyph(face, glyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP) != 0 ||
        face->glyph->format != FT_GLYPH_FORMAT_OUTLINE) {
        return {};
    }
    static const FT_Outline_Funcs funcs{MoveTo, LineTo, ConicTo, CubicTo, 0, 0};
    OutlineSink sink;
    if (FT_Outline_Decompose(&face->glyph->outline, &funcs, &sink) != 0) {
        return {};
    }
    return std::move(sink.segments);
}

int32_t ZoFontFace::HintedAdvancePixels(int32_t pixels, char32_t character) const {
    const uint64_t key = uint64_t{static_cast<uint32_t>(pixels)} << 32 | character;
    {
        std::lock_guard lock(advancesMutex_);
        if (const auto found = advances_.find(key); found != advances_.end()) {
            return found->second;
        }
    }
    int32_t advance = 0;
    {
        std::lock_guard lock(FreeTypeMutex());
        const FT_Face face = face_->face;
        const FT_UInt glyph = FT_Get_Char_Index(face, character);
        if (glyph != 0 && FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(pixels)) == 0 &&
            FT_Load_Glyph(face, glyph, FT_LOAD_DEFAULT | FT_LOAD_NO_BITMAP) == 0) {
            advance = static_cast<int32_t>((face->glyph->advance.x + 32) >> 6);
        }
    }
    std::lock_guard lock(advancesMutex_);
    advances_.emplace(key, advance);
    return advance;
}

std::shared_ptr<const ZoScaledFont> ZoFontFace::AtPixelSize(int32_t pixels) {
    pixels = std::clamp(pixels, 1, kMaxPixelSize);
    std::lock_guard lock(sizesMutex_);
    auto& slot = sizes_[pixels];
    auto scaled = slot.lock();
    if (!scaled) {
        scaled = std::make_shared<ZoScaledFont>(shared_from_this(), pixels);
        slot = scaled;
    }
    return scaled;
}

ZoScaledFont::ZoScaledFont(std::shared_ptr<ZoFontFace> face, int32_t pixels)
    : face_(std::move(face)),
      pixels_(pixels),
      ascent_(RoundedScale(face_->AscentUnits(), pixels, face_->UnitsPerEm())),
      descent_(RoundedScale(face_->DescentUnits(), pixels, face_->UnitsPerEm())) {}

int32_t ZoScaledFont::Advance(char32_t character) const {
    return face_->HintedAdvancePixels(pixels_, character);
}
