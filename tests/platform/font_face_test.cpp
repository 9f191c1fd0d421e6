#include <gtest/gtest.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <cmath>
#include <string_view>
#include <thread>

#include "platform/font_catalog.h"

namespace {

// FreeType opened directly, without our layer, to check what the layer says.
class DirectFace {
  public:
    explicit DirectFace(const ZoString& path) {
        EXPECT_EQ(FT_Init_FreeType(&library_), 0);
        EXPECT_EQ(FT_New_Face(library_, path.c_str(), 0, &face_), 0);
    }
    ~DirectFace() {
        FT_Done_Face(face_);
        FT_Done_FreeType(library_);
    }
    FT_Face get() const { return face_; }

  private:
    FT_Library library_ = nullptr;
    FT_Face face_ = nullptr;
};

ptrdiff_t Contours(const ZoGlyphOutline& outline) {
    return std::count_if(outline.begin(), outline.end(), [](const ZoGlyphSegment& s) {
        return s.kind == ZoGlyphSegmentKind::Move;
    });
}

}  // namespace

TEST(FontCatalog, WindowsFamiliesResolveToTheirMetricAliases) {
    struct Case {
        const char* family;
        bool bold;
        bool italic;
        const char* expected;
    };
    const Case cases[] = {
        {"Arial", false, false, "Liberation Sans"},
        {"Arial", true, true, "Liberation Sans"},
        {"Times New Roman", true, false, "Liberation Serif"},
        {"Courier New", false, true, "Liberation Mono"},
        {"courier new", true, false, "Liberation Mono"},
        {"Liberation Sans", false, true, "Liberation Sans"},
    };
    for (const auto& c : cases) {
        const auto face = ZoFindFontFace(c.family, c.bold, c.italic);
        ASSERT_TRUE(face) << c.family;
        EXPECT_EQ(face->Family(), c.expected) << c.family;
        EXPECT_EQ(face->IsBold(), c.bold) << c.family;
        EXPECT_EQ(face->IsItalic(), c.italic) << c.family;
        EXPECT_TRUE(ZoHasFontFamily(c.family)) << c.family;
    }
    EXPECT_EQ(ZoFindFontFace("Arial", true, false), ZoFindFontFace("arial", true, false));
}

TEST(FontCatalog, UnknownFamilyFallsBackToTheDefaultFamily) {
    EXPECT_FALSE(ZoHasFontFamily("No Such Family Anywhere"));
    const auto fallback = ZoFindFontFace("No Such Family Anywhere", false, true);
    const auto expected = ZoFindFontFace(kZoFallbackFontFamily, false, true);
    EXPECT_EQ(fallback, expected);
    EXPECT_EQ(ZoFindFontFace("", false, false),
              ZoFindFontFace(kZoFallbackFontFamily, false, false));
}

TEST(FontFace, LiberationSansHasArialsAdvanceWidths) {
    // Published Arial widths in units of a 2048 em; Liberation Sans matches
    // them, which is why it stands in for Arial.
    const auto face = ZoFindFontFace("Arial", false, false);
    ASSERT_EQ(face->UnitsPerEm(), 2048);
    EXPECT_EQ(face->AdvanceUnits(' '), 569);
    EXPECT_EQ(face->AdvanceUnits('A'), 1366);
    EXPECT_EQ(face->AdvanceUnits('a'), 1139);
    EXPECT_EQ(face->AdvanceUnits(U'\u4E00'), 0);  // not in the face
    EXPECT_FALSE(face->HasGlyph(U'\u4E00'));
}

TEST(FontFace, ScaledMetricsAgreeWithFreeType) {
    const auto face = ZoFindFontFace("Arial", false, false);
    const DirectFace direct(face->Path());
    const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(direct.get(), FT_SFNT_OS2));
    ASSERT_NE(os2, nullptr);
    for (const int32_t pixels : {8, 13, 16, 24, 37, 100}) {
        const auto scaled = face->AtPixelSize(pixels);
        const double em = direct.get()->units_per_EM;
        EXPECT_EQ(scaled->Ascent(), std::lround(os2->usWinAscent * pixels / em)) << pixels;
        EXPECT_EQ(scaled->Descent(), std::lround(os2->usWinDescent * pixels / em)) << pixels;
        EXPECT_EQ(scaled->Height(), scaled->Ascent() + scaled->Descent());
        ASSERT_EQ(FT_Set_Pixel_Sizes(direct.get(), 0, pixels), 0);
        for (const char32_t c : std::u32string_view(U"AVWaijm .,0")) {
            ASSERT_EQ(FT_Load_Char(direct.get(), c, FT_LOAD_DEFAULT | FT_LOAD_NO_BITMAP), 0);
            const auto advance = static_cast<int32_t>((direct.get()->glyph->advance.x + 32) >> 6);
            EXPECT_EQ(scaled->Advance(c), advance) << pixels << " " << static_cast<int>(c);
        }
    }
    EXPECT_EQ(face->AtPixelSize(13), face->AtPixelSize(13));
    EXPECT_EQ(face->AtPixelSize(0)->PixelSize(), 1);
}

TEST(FontFace, OutlinesAreClosedContoursInFontUnits) {
    const auto face = ZoFindFontFace("Times New Roman", false, false);
    const DirectFace direct(face->Path());
    for (const char32_t c : std::u32string_view(U"OilB&")) {
        const ZoGlyphOutline outline = face->Outline(c);
        ASSERT_FALSE(outline.empty());
        EXPECT_EQ(outline.front().kind, ZoGlyphSegmentKind::Move);
        ASSERT_EQ(FT_Load_Char(direct.get(), c, FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP), 0);
        EXPECT_EQ(Contours(outline), direct.get()->glyph->outline.n_contours);
        // Every on-curve point lies in the glyph's box.
        const FT_Glyph_Metrics& m = direct.get()->glyph->metrics;
        for (const auto& segment : outline) {
            EXPECT_GE(segment.end.x, m.horiBearingX);
            EXPECT_LE(segment.end.x, m.horiBearingX + m.width);
            EXPECT_LE(segment.end.y, m.horiBearingY);
            EXPECT_GE(segment.end.y, m.horiBearingY - m.height);
        }
    }
    EXPECT_TRUE(face->Outline(' ').empty());
    EXPECT_EQ(Contours(face->Outline('O')), 2);
    EXPECT_GT(face->UnderlineThicknessUnits(), 0);
    EXPECT_LT(face->UnderlinePositionUnits(), 0);
}

TEST(FontFace, ThreadsMeasuringAtOnceAgreeWithOneThread) {
    const auto face = ZoFindFontFace("Courier New", true, false);
    auto measure = [&](int32_t first) {
        int64_t sum = 0;
        for (int32_t pixels = first; pixels < first + 12; ++pixels) {
            const auto scaled = face->AtPixelSize(pixels);
            for (char32_t c = 32; c < 127; ++c) {
                sum += scaled->Advance(c) * static_cast<int64_t>(c);
            }
            sum += static_cast<int64_t>(face->Outline('g').size());
        }
        return sum;
    };
    const int64_t expected = measure(10);
    int64_t results[4] = {};
    {
        std::vector<std::jthread> threads;
        for (auto& result : results) {
            threads.emplace_back([&result, &measure] { result = measure(10); });
        }
    }
    for (const int64_t result : results) {
        EXPECT_EQ(result, expected);
    }
}
