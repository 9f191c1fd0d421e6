// The text object played in Ruffle: its glyphs must show where the layout
// put them, whole in a cross fade and cut into mesh pieces.
#include <gtest/gtest.h>

#include <algorithm>

#include "effects/cross_fade_effect.h"
#include "effects/wave_effect.h"
#include "flash/swf_sequence.h"
#include "flash/swf_shape.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "objects/text_object.h"
#include "platform/zo_exception.h"
#include "playback/pixel_checks.h"
#include "playback/playback_movie.h"

namespace {

constexpr int kWidth = 240, kHeight = 120;
constexpr ZoRect kRect{0, 0, kWidth * 20, kHeight * 20};
// Bold capitals I are plain stems, with wide gaps between them.
constexpr const char* kStems = R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}\f0\b\fs144 I I I})";

TeskTextObject Stems() {
    TeskTextObject text;
    text.GetRichText().SetRTF(kStems);
    text.SetPageSize({kWidth, kHeight});
    return text;
}

void WriteMovie(TeskSWFMovie& movie, const std::filesystem::path& file) {
    movie.SetFilename(file.c_str());
    if (!movie.WriteMovieFile())
        throw ZoException("cannot write " + file.string());
}

TeskSWFMovie& WhiteMovie(TeskSWFMovie& movie) {
    movie.SetWidth(kWidth);
    movie.SetHeight(kHeight);
    movie.SetFrameRate(12);
    movie.SetBackgroundColour(ZoFlash::ZoSWFColour(0xFFFFFF, 255));
    movie.AddScene();
    return movie;
}

// Frame 0 of a cross fade shows the start object alone.
void WriteCrossFade(const std::filesystem::path& file) {
    TeskSWFMovie movie;
    TeskCrossFadeEffect fade;
    ZoAutoPtr<TeskObject> text = std::make_unique<TeskTextObject>(Stems());
    ZoAutoPtr<TeskObject> blue = std::make_unique<TeskSolidObject>(0xFF0000);
    fade.SetStartObject(text, nullptr);
    fade.SetEndObject(blue, nullptr);
    fade.SetEffectTime(1000, nullptr);
    fade.Compile(WhiteMovie(movie), true);
    WriteMovie(movie, file);
}

// A wave without amplitude leaves its pieces where the object has them.
void WriteFlatWave(const std::filesystem::path& file) {
    TeskSWFMovie movie;
    TeskWaveEffect wave;
    ZoAutoPtr<TeskObject> text = std::make_unique<TeskTextObject>(Stems());
    wave.SetWaveObject(text, nullptr);
    wave.SetAmplitude(0, nullptr);
    wave.SetEffectTime(1000, nullptr);
    wave.Compile(WhiteMovie(movie), true);
    WriteMovie(movie, file);
}

// The pieces of a 6 x 3 mesh placed at rest, as a mesh effect's first frame.
void PlacePieces(TeskSWFMovie& movie, TeskTextObject& text, ZoFlash::ZoSWFFrame& frame) {
    text.PrepareOutput();
    int depth = 1;
    for (int i = 0; i < 6; ++i) {
        for (int j = 0; j < 3; ++j) {
            const int32_t x0 = kRect.Width() * i / 6, x1 = kRect.Width() * (i + 1) / 6;
            const int32_t y0 = kRect.Height() * j / 3, y1 = kRect.Height() * (j + 1) / 3;
            for (const TeskTriangle& triangle : {TeskTriangle{{{x0, y0}, {x1, y0}, {x1, y1}}},
                                                 TeskTriangle{{{x0, y0}, {x1, y1}, {x0, y1}}}}) {
                frame.PlaceObject(text.MakeTriangleShape(movie, kRect, triangle), nullptr, depth++,
                                  {}, 0, -1, {});
            }
        }
    }
    text.ReleaseOutput();
}

void WritePieces(const std::filesystem::path& file) {
    TeskSWFMovie movie;
    TeskTextObject text = Stems();
    PlacePieces(movie, text, *WhiteMovie(movie).GetScene(0)->AddFrame());
    WriteMovie(movie, file);
}

// Letters with curves and holes, two faces, two colours and a bullet.
constexpr const char* kWords =
    R"({\rtf1\ansi{\fonttbl{\f0 Arial;}{\f1 Times New Roman;}})"
    R"({\colortbl\red0\green0\blue0;\red200\green0\blue0;})"
    R"(\f0\fs56 Hello, \cf1\i\f1 world\par\pard\bullet\cf0\i0\f0 Quiz@8%})";

void WriteWordsWhole(const std::filesystem::path& file) {
    TeskSWFMovie movie;
    TeskTextObject text;
    text.GetRichText().SetRTF(kWords);
    WhiteMovie(movie).GetScene(0)->AddFrame()->PlaceObject(text.MakeShape(movie, kRect), nullptr, 1,
                                                           {}, 0, -1, {});
    WriteMovie(movie, file);
}

void WriteWordsPieces(const std::filesystem::path& file) {
    TeskSWFMovie movie;
    TeskTextObject text;
    text.GetRichText().SetRTF(kWords);
    PlacePieces(movie, text, *WhiteMovie(movie).GetScene(0)->AddFrame());
    WriteMovie(movie, file);
}

const playback::PlaybackMovie kCrossFade("text_cross_fade", {0}, WriteCrossFade);
const playback::PlaybackMovie kPieces("text_pieces", {0}, WritePieces);
const playback::PlaybackMovie kFlatWave("text_flat_wave", {0, 6}, WriteFlatWave);
const playback::PlaybackMovie kWordsWhole("words_whole", {0}, WriteWordsWhole);
const playback::PlaybackMovie kWordsPieces("words_pieces", {0}, WriteWordsPieces);

struct Box {
    double left, top, right, bottom;
};

// The ink of character `index` of the first line, in pixels, from the
// layout's pen positions and the face's own outline.
Box InkOf(TeskTextObject& text, size_t index) {
    const ZoTextItem& item = text.GetRichText().Lines().at(0).items.at(0);
    const double pen = item.x + (index == 0 ? 0 : item.positions.at(index - 1));
    const double baseline = item.Origin().y;
    const ZoFontFace& face = item.font->Face();
    const double scale = static_cast<double>(item.font->PixelSize()) / face.UnitsPerEm();
    Box box{1e9, 1e9, -1e9, -1e9};
    for (const ZoGlyphSegment& segment : face.Outline(static_cast<char32_t>(item.text[index]))) {
        box.left = std::min(box.left, pen + segment.end.x * scale);
        box.right = std::max(box.right, pen + segment.end.x * scale);
        box.top = std::min(box.top, baseline - segment.end.y * scale);
        box.bottom = std::max(box.bottom, baseline - segment.end.y * scale);
    }
    return box;
}

// Black in the middle of every stem and white in the middle of every gap,
// above the stems and below the baseline.
std::vector<playback::SamplePoint> StemsAndGaps() {
    TeskTextObject text = Stems();
    const playback::Rgb black{0, 0, 0}, white{255, 255, 255};
    std::vector<playback::SamplePoint> points;
    const auto at = [&](double x, double y, playback::Rgb colour) {
        points.push_back({static_cast<int>(x), static_cast<int>(y), colour});
    };
    Box previous{};
    for (size_t index : {0, 2, 4}) {
        const Box stem = InkOf(text, index);
        const double middle = (stem.top + stem.bottom) / 2;
        at((stem.left + stem.right) / 2, middle, black);
        if (index > 0)
            at((previous.right + stem.left) / 2, middle, white);
        at((stem.left + stem.right) / 2, stem.top - 6, white);
        at((stem.left + stem.right) / 2, stem.bottom + 6, white);
        previous = stem;
    }
    return points;
}

TEST(TextPlayback, GlyphsShowWhereTheLayoutPutsThem) {
    const std::vector<playback::SamplePoint> points = StemsAndGaps();
    const struct {
        const playback::PlaybackMovie& movie;
        int frame;
        int tolerance;
    } rows[] = {
        {kCrossFade, 0, 8},
        {kPieces, 0, 8},
        // The wave's light greys everything a little even when flat.
        {kFlatWave, 0, 32},
        {kFlatWave, 6, 32},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.movie.File().filename().string() + " frame " + std::to_string(row.frame));
        EXPECT_TRUE(playback::ColoursAt(row.movie.Frame(row.frame), points, row.tolerance));
    }
}

// Anti-aliasing differs a little where a piece's edge runs through a
// letter; anything misplaced, missing or in the wrong colour differs by
// hundreds of pixels.
TEST(TextPlayback, PiecesLookLikeTheWholeText) {
    EXPECT_TRUE(playback::FramesMatch(kWordsPieces.Frame(0), kWordsWhole.Frame(0), 96, 60));
}

}  // namespace
