// The text object played in Ruffle: its glyphs must show where the layout
// put them, drawn whole in a cross fade and cut into the pieces of a wave.
#include <gtest/gtest.h>

#include "effects/cross_fade_effect.h"
#include "effects/wave_effect.h"
#include "flash/swf_sequence.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "objects/text_object.h"
#include "platform/zo_exception.h"
#include "playback/pixel_checks.h"
#include "playback/playback_movie.h"

namespace {

constexpr int kWidth = 240, kHeight = 120;
constexpr COLORREF kPaper = 0x80FFFF;  // light yellow behind the text
const playback::Rgb kInk{0, 0, 0}, kPaperRgb{255, 255, 128};

// Bold capitals I are plain stems, with wide gaps between them.
TeskTextObject Stems() {
    TeskTextObject text;
    text.GetRichText().SetRTF(R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}\f0\b\fs144 I I I})");
    text.SetBackColour(kPaper);
    text.SetPageSize({kWidth, kHeight});
    return text;
}

// Compiles `effect` into a white movie and writes it.
void WriteEffect(TeskEffect& effect, const std::filesystem::path& file) {
    TeskSWFMovie movie;
    movie.SetWidth(kWidth);
    movie.SetHeight(kHeight);
    movie.SetFrameRate(12);
    movie.SetBackgroundColour(ZoFlash::ZoSWFColour(0xFFFFFF, 255));
    movie.AddScene();
    effect.SetEffectTime(1000, nullptr);
    effect.Compile(movie, true);
    movie.SetFilename(file.c_str());
    if (!movie.WriteMovieFile())
        throw ZoException("cannot write " + file.string());
}

// Frame 0 of a cross fade shows the start object alone.
void WriteCrossFade(const std::filesystem::path& file) {
    TeskCrossFadeEffect fade;
    ZoAutoPtr<TeskObject> text = std::make_unique<TeskTextObject>(Stems());
    ZoAutoPtr<TeskObject> blue = std::make_unique<TeskSolidObject>(0xFF0000);
    fade.SetStartObject(text, nullptr);
    fade.SetEndObject(blue, nullptr);
    WriteEffect(fade, file);
}

// A wave without amplitude leaves its pieces where the object has them.
void WriteFlatWave(const std::filesystem::path& file) {
    TeskWaveEffect wave;
    ZoAutoPtr<TeskObject> text = std::make_unique<TeskTextObject>(Stems());
    wave.SetWaveObject(text, nullptr);
    wave.SetAmplitude(0, nullptr);
    WriteEffect(wave, file);
}

const playback::PlaybackMovie kCrossFade("text_cross_fade", {0}, WriteCrossFade);
const playback::PlaybackMovie kFlatWave("text_flat_wave", {0, 6}, WriteFlatWave);

// From the layout alone: ink in the middle of every stem, paper in the
// middle of every space between them, above the capitals and below the
// baseline. An I's stem is centred in its advance and reaches from the
// baseline to about 0.7 em.
std::vector<playback::SamplePoint> StemsAndGaps() {
    TeskTextObject text = Stems();
    const ZoTextItem& item = text.GetRichText().Lines().at(0).items.at(0);
    const int baseline = item.Origin().y, em = item.font->PixelSize();
    std::vector<playback::SamplePoint> points;
    for (size_t index = 0; index < 5; ++index) {
        const int start = index == 0 ? 0 : item.positions[index - 1];
        const int centre = item.x + (start + item.positions[index]) / 2;
        const bool stem = item.text[index] == 'I';
        points.push_back({centre, baseline - em * 35 / 100, stem ? kInk : kPaperRgb});
        points.push_back({centre, baseline - em * 85 / 100, kPaperRgb});
        points.push_back({centre, baseline + 6, kPaperRgb});
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
        // The wave's light greys everything a little even when flat.
        {kFlatWave, 0, 32},
        {kFlatWave, 6, 32},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.movie.File().filename().string() + " frame " + std::to_string(row.frame));
        EXPECT_TRUE(playback::ColoursAt(row.movie.Frame(row.frame), points, row.tolerance));
    }
}

}  // namespace
