// Pictures and gradients played in Ruffle: a cross fade from a PNG with
// transparency to a JPEG, a wave over a photo whose pieces must join without
// seams, and graduated objects whose colours follow their stops.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>

#include "document/file.h"
#include "effects/cross_fade_effect.h"
#include "effects/wave_effect.h"
#include "objects/graduated_object.h"
#include "objects/image_object.h"
#include "platform/image_test_files.h"
#include "platform/temp_directory.h"
#include "playback/pixel_checks.h"
#include "playback/playback_movie.h"
#include "publish/movie_compiler.h"

namespace {

namespace fs = std::filesystem;
using playback::Rgb;

constexpr int kWidth = 160, kHeight = 120;
constexpr int kFadeFrames = 12;  // 1000 ms at 12 frames per second
constexpr int kTolerance = 6;
// The movie's background: a colour no picture here has, so that any gap
// between pieces shows.
constexpr COLORREF kBackground = 0xFF00FF;

// The PNG: 40 x 30 pixels in three columns, opaque red, half-transparent blue
// and fully transparent; stretched four times over the movie.
const Rgb kRed{220, 30, 30};
constexpr uint8_t kHalf = 128;
// The photo: 64 x 64 pixels in four flat quadrants on the JPEG's 16-pixel
// blocks, in brown tints that differ in brightness only. So they decode
// flat, and their edges stay sharp: decoders smooth colour across block
// edges, but never brightness.
const Rgb kQuadrants[] = {{90, 60, 30}, {140, 110, 80}, {190, 160, 130}, {240, 210, 180}};

fs::path WriteFile(const char* name, const ImageTestFiles::Bytes& bytes) {
    static const fs::path folder = [] {
        fs::path made = ZoMakeTempFileName("");
        fs::create_directories(made);
        return made;
    }();
    const fs::path path = folder / name;
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return path;
}

fs::path TransparentPng() {
    ImageTestFiles::Bytes samples;
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x) {
            const int column = x * 3 / 40;
            if (column == 0)
                samples.insert(samples.end(), {kRed.r, kRed.g, kRed.b, 255});
            else
                samples.insert(samples.end(), {0, 0, 255, uint8_t(column == 1 ? kHalf : 0)});
        }
    return WriteFile("columns.png", ImageTestFiles::EncodePng({40, 30, 6, 8, samples}));
}

Rgb Quadrant(int x, int y, int width, int height) {
    return kQuadrants[(y * 2 / height) * 2 + x * 2 / width];
}

fs::path QuadrantJpeg() {
    ImageTestFiles::JpegSource source{64, 64, 3, false, {}};
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) {
            const Rgb colour = Quadrant(x, y, 64, 64);
            source.samples.insert(source.samples.end(), {colour.r, colour.g, colour.b});
        }
    return WriteFile("quadrants.jpg", ImageTestFiles::EncodeJpeg(source));
}

void WriteEffect(ZoAutoPtr<TeskEffect> effect, const fs::path& movie) {
    TeskFile file;
    file.RemoveEffect(0, nullptr);
    file.SetWidth(kWidth, nullptr);
    file.SetHeight(kHeight, nullptr);
    file.SetFrameRate(12, nullptr);
    file.SetBackgroundColour(kBackground, nullptr);
    effect->SetEffectTime(1000, nullptr);
    file.InsertEffect(effect, 0, nullptr);
    TeskWriteMovie(file, movie);
}

void WriteFade(ZoAutoPtr<TeskObject> from, ZoAutoPtr<TeskObject> to, const fs::path& movie) {
    auto fade = std::make_unique<TeskCrossFadeEffect>();
    fade->SetStartObject(from, nullptr);
    fade->SetEndObject(to, nullptr);
    WriteEffect(std::move(fade), movie);
}

void WritePictureFade(const fs::path& movie) {
    WriteFade(std::make_unique<TeskImageObject>(TransparentPng().string()),
              std::make_unique<TeskImageObject>(QuadrantJpeg().string()), movie);
}

// Unlit, so that every piece keeps the photo's own colours.
void WritePhotoWave(int32_t amplitude, const fs::path& movie) {
    auto wave = std::make_unique<TeskWaveEffect>();
    ZoAutoPtr<TeskObject> photo = std::make_unique<TeskImageObject>(QuadrantJpeg().string());
    wave->SetWaveObject(photo, nullptr);
    wave->SetAmplitude(amplitude, nullptr);
    wave->SetUseLighting(false, nullptr);
    WriteEffect(std::move(wave), movie);
}

// Red, green, blue at 0, 128, 255.
ZoAutoPtr<TeskObject> Gradient(int32_t type) {
    auto gradient = std::make_unique<TeskGraduatedObject>();
    gradient->SetGradientType(type);
    if (type == kTeskLinearGradient) {
        gradient->SetStops({{255, 0, 0, 255}, {0, 255, 0, 255}, {0, 0, 255, 255}}, {0, 128, 255});
    } else {
        gradient->SetStops({{255, 0, 0, 255}, {0, 0, 255, 255}}, {0, 255});
    }
    return gradient;
}

const playback::PlaybackMovie kPictureFade("picture_fade", {0, 6, kFadeFrames - 1},
                                           WritePictureFade);
const playback::PlaybackMovie kFlatWave("flat_photo_wave", {0, 6},
                                        [](const fs::path& movie) { WritePhotoWave(0, movie); });
const playback::PlaybackMovie kWave("photo_wave", {3, 8},
                                    [](const fs::path& movie) { WritePhotoWave(150, movie); });
const playback::PlaybackMovie kLinear("linear_gradient", {0}, [](const fs::path& movie) {
    WriteFade(Gradient(kTeskLinearGradient), Gradient(kTeskLinearGradient), movie);
});
const playback::PlaybackMovie kRadial("radial_gradient", {0}, [](const fs::path& movie) {
    WriteFade(Gradient(kTeskRadialGradient), Gradient(kTeskRadialGradient), movie);
});

Rgb Mix(Rgb from, Rgb to, double t) {
    const auto channel = [t](int a, int b) {
        return static_cast<uint8_t>(std::lround(a + (b - a) * t));
    };
    return {channel(from.r, to.r), channel(from.g, to.g), channel(from.b, to.b)};
}

Rgb Over(Rgb top, uint8_t alpha, Rgb below) {
    return Mix(below, top, alpha / 255.0);
}

TEST(ImagePlayback, CrossFadeFromATransparentPngToAJpeg) {
    const Rgb background{255, 0, 255}, blue{0, 0, 255};
    // The PNG's columns over the background, at the middle of each column
    // in the top and bottom halves (the photo's quadrants).
    const Rgb columns[] = {kRed, Over(blue, kHalf, background), background};
    for (int frame : {0, 6, kFadeFrames - 1}) {
        const double alpha = TeskCrossFadeAlpha(frame, kFadeFrames, false);
        std::vector<playback::SamplePoint> points;
        for (int column = 0; column < 3; ++column)
            for (int y : {20, 100}) {
                const int x = column * 160 / 3 + 13;
                points.push_back({x, y, Mix(columns[column], Quadrant(x, y, 160, 120), alpha)});
            }
        EXPECT_TRUE(playback::ColoursAt(kPictureFade.Frame(frame), points, kTolerance)) << frame;
    }
}

// Pixels of `frame` inside `area` that are none of the photo's colours: a
// seam between pieces lets the background through and makes a line of them.
int StrangePixels(const playback::PngImage& frame, const ZoRect& area) {
    int strange = 0;
    for (int y = area.top; y < area.bottom; ++y)
        for (int x = area.left; x < area.right; ++x) {
            const playback::Rgba pixel = frame.At(x, y);
            bool known = false;
            for (const Rgb& colour : kQuadrants)
                known = known || playback::ChannelDistance(pixel, colour) <= kTolerance;
            strange += known ? 0 : 1;
        }
    return strange;
}

TEST(ImagePlayback, AWaveOverAPhotoKeepsItsColoursWithoutSeams) {
    // Flat: every piece where the photo has it, each quadrant whole.
    for (int frame : {0, 6}) {
        const playback::PngImage shown = kFlatWave.Frame(frame);
        std::vector<playback::SamplePoint> points;
        for (int y : {10, 50, 70, 110})
            for (int x : {10, 70, 90, 150})
                points.push_back({x, y, Quadrant(x, y, kWidth, kHeight)});
        EXPECT_TRUE(playback::ColoursAt(shown, points, kTolerance)) << frame;
        // Quadrant edges excepted, which scaling may move a pixel.
        for (const ZoRect& quadrant : {ZoRect{2, 2, 78, 58}, ZoRect{82, 2, 158, 58},
                                       ZoRect{2, 62, 78, 118}, ZoRect{82, 62, 158, 118}})
            EXPECT_EQ(StrangePixels(shown, quadrant), 0) << frame;
    }
    // Moving: the middle stays covered, in the photo's colours, except where
    // a quadrant's edge crosses a piece's and the player mixes the two.
    const ZoRect middle{40, 30, 120, 90};
    for (int frame : {3, 8})
        EXPECT_LE(StrangePixels(kWave.Frame(frame), middle), middle.Width() * middle.Height() / 500)
            << frame;
}

TEST(ImagePlayback, GradientColoursFollowTheStops) {
    const Rgb red{255, 0, 0}, green{0, 255, 0}, blue{0, 0, 255};
    // Linear at 0 degrees: the stops run from the left edge to the right one.
    std::vector<playback::SamplePoint> linear;
    for (int x : {8, 40, 64, 80, 96, 120, 152}) {
        const double ratio = 255.0 * (x + 0.5) / kWidth;
        const Rgb expected =
            ratio < 128 ? Mix(red, green, ratio / 128) : Mix(green, blue, (ratio - 128) / 127);
        for (int y : {10, 60, 110})
            linear.push_back({x, y, expected});
    }
    EXPECT_TRUE(playback::ColoursAt(kLinear.Frame(0), linear, kTolerance));

    // Radial: the last stop at the centre, the first on the circle through
    // the corners.
    const double radius = std::hypot(kWidth, kHeight) / 2;
    std::vector<playback::SamplePoint> radial;
    const std::pair<int, int> offsets[] = {{0, 0}, {20, 0}, {-40, 0}, {70, 0}, {0, 50}, {-60, -45}};
    for (const auto& [dx, dy] : offsets) {
        const double distance = std::hypot(dx + 0.5, dy + 0.5);
        radial.push_back({kWidth / 2 + dx, kHeight / 2 + dy, Mix(blue, red, distance / radius)});
    }
    EXPECT_TRUE(playback::ColoursAt(kRadial.Frame(0), radial, kTolerance));
}

}  // namespace
