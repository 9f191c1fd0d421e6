// Effects as a real player draws them, each with its default settings
// turning a red object over a green background object: the first frame
// shows the object whole, the pieces close up wherever the object should
// cover the movie, and the middle and last frames show what each effect has
// done by then. Here the rotate 3D, lens, spiral and test effects.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "document/file.h"
#include "effects/lens_effect.h"
#include "effects/rotate_3d_effect.h"
#include "effects/rotate_3d_motion.h"
#include "effects/spiral_effect.h"
#include "effects/test_effect.h"
#include "objects/solid_object.h"
#include "playback/pixel_checks.h"
#include "playback/playback_movie.h"
#include "publish/movie_compiler.h"

namespace {

constexpr COLORREF kObjectColour = 0x002828DC;      // red (220, 40, 40)
constexpr COLORREF kBackgroundColour = 0x003CB428;  // green (40, 180, 60)
const playback::Rgb kObject{220, 40, 40};
const playback::Rgb kBackground{40, 180, 60};
const std::vector<int> kFrames{0, 12, 23};

// The default document with `effect`, over the red object, in place of its wave.
playback::PlaybackMovie Movie(const char* name, std::function<ZoAutoPtr<TeskEffect>()> make) {
    return playback::PlaybackMovie(name, kFrames, [make](const auto& path) {
        TeskFile file;
        file.RemoveEffect(0, nullptr);
        ZoAutoPtr<TeskEffect> effect = make();
        ZoAutoPtr<TeskObject> object = std::make_unique<TeskSolidObject>(kObjectColour);
        effect->SetObject(object, 0);
        file.InsertEffect(effect, 0, nullptr);
        ZoAutoPtr<TeskObject> background = std::make_unique<TeskSolidObject>(kBackgroundColour);
        file.SetBackgroundObject(background, nullptr);
        TeskWriteMovie(file, path);
    });
}

template <typename Effect>
ZoAutoPtr<TeskEffect> Make() {
    return std::make_unique<Effect>();
}

const playback::PlaybackMovie kRotate = Movie("rotate_3d", Make<TeskRotate3DEffect>);
const playback::PlaybackMovie kLens = Movie("lens", Make<TeskLensEffect>);
const playback::PlaybackMovie kSpiral = Movie("spiral", Make<TeskSpiralEffect>);
const playback::PlaybackMovie kTest = Movie("test_effect", Make<TeskTestEffect>);

// The red object under the rotate 3D effect's flat light in frame `frame`.
playback::Rgb RotatedObject(int frame) {
    const TeskRotate3DEffect rotate;
    const TeskLightModel light = rotate.GetLightModel();
    const TeskRotate3DMotion motion(rotate.GetAxisDirection(), {0, 0, 3640, 4040});
    ZoFlash::ZoSWFColourTransformation ct;
    light.ApplyLight(light.LightFactor(motion.Normal(TeskRotate3DMotion::TurnAt(frame, 24))), ct);
    const auto channel = [&](int i, int value) {
        return static_cast<std::uint8_t>(std::lround(value * ct.GetScale(i) + ct.GetOffset(i)));
    };
    return {channel(0, kObject.r), channel(1, kObject.g), channel(2, kObject.b)};
}

int PixelsNear(const playback::PngImage& frame, playback::Rgb colour) {
    int count = 0;
    for (int y = 0; y < frame.Height(); ++y) {
        for (int x = 0; x < frame.Width(); ++x)
            count += playback::ChannelDistance(frame.At(x, y), colour) <= 8;
    }
    return count;
}

int AllPixels(const playback::PngImage& frame) {
    return frame.Width() * frame.Height();
}

// The middle of the movie and points near its four corners (182 × 202).
std::vector<playback::SamplePoint> Samples(playback::Rgb colour, bool withCorners) {
    std::vector<playback::SamplePoint> points{{91, 101, colour}};
    if (withCorners) {
        for (const auto& [x, y] : {std::pair{3, 3}, {178, 3}, {3, 198}, {178, 198}})
            points.push_back({x, y, colour});
    }
    return points;
}

// Every pixel shows `colour`: the pieces cover the movie without a seam.
void ExpectCovered(const playback::PlaybackMovie& movie, int frame, playback::Rgb colour) {
    const playback::PngImage picture = movie.Frame(frame);
    EXPECT_EQ(PixelsNear(picture, colour), AllPixels(picture)) << movie.File() << " " << frame;
}

TEST(GridEffectsPlayback, Rotate3DShowsItsBackWholeHalfWayAndTurnsBackNearlyAll) {
    ExpectCovered(kRotate, 0, RotatedObject(0));
    // Mirrored, and lit like the front: both sides light alike.
    ExpectCovered(kRotate, 12, RotatedObject(12));
    EXPECT_TRUE(playback::ColoursAt(kRotate.Frame(23), Samples(RotatedObject(23), false), 4));
    // The edge turned away leaves the background beside it.
    EXPECT_GT(PixelsNear(kRotate.Frame(23), kBackground), 0);
}

TEST(GridEffectsPlayback, TheLensKeepsItsRimSoTheObjectStaysWhole) {
    for (const int frame : kFrames)
        ExpectCovered(kLens, frame, kObject);
}

TEST(GridEffectsPlayback, TheSpiralRocksBackToRestAndKeepsItsCorners) {
    ExpectCovered(kSpiral, 0, kObject);
    ExpectCovered(kSpiral, 12, kObject);
    // Turned again towards the end, the middle most; the corners stay.
    EXPECT_TRUE(playback::ColoursAt(kSpiral.Frame(23), Samples(kObject, true), 4));
    EXPECT_GT(PixelsNear(kSpiral.Frame(23), kBackground), 0);
}

TEST(GridEffectsPlayback, TheTestEffectExplodesThePiecesApart) {
    ExpectCovered(kTest, 0, kObject);
    for (const int frame : {12, 23}) {
        const playback::PngImage picture = kTest.Frame(frame);
        EXPECT_GT(PixelsNear(picture, kBackground), AllPixels(picture) / 20) << frame;
        EXPECT_GT(PixelsNear(picture, kObject), AllPixels(picture) / 20) << frame;
    }
}

}  // namespace
