// The default document's wave as a real player draws it: the mesh pieces must
// close up so that nothing behind the object shows through a seam, and a
// surface that starts flat must look like the object itself.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "document/file.h"
#include "effects/wave_effect.h"
#include "flash/swf_sequence.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "pixel_misses.h"
#include "playback/pixel_checks.h"
#include "playback/playback_movie.h"
#include "publish/movie_compiler.h"

namespace {

const std::vector<int> kFrames{0, 6, 12, 23};

TeskWaveEffect& WaveOf(const TeskFile& file) {
    return dynamic_cast<TeskWaveEffect&>(*file.GetEffect(0));
}

// The same movie on the white movie background and over a green background
// object: wherever the two differ, the background shows.
const playback::PlaybackMovie kOnWhite("wave_default", kFrames,
                                       [](const auto& path) { TeskWriteMovie(TeskFile(), path); });
const playback::PlaybackMovie kOnGreen("wave_on_green", kFrames, [](const auto& path) {
    TeskFile file;
    ZoAutoPtr<TeskObject> green = std::make_unique<TeskSolidObject>(0x00FF00);
    file.SetBackgroundObject(green, nullptr);
    TeskWriteMovie(file, path);
});
// "Rise & Fall" starts flat. Its twin replaces the wave by a cross fade
// that shows the object whole, under the flat light of a face towards the
// viewer: what the flat wave must look like.
const playback::PlaybackMovie kRising("wave_rising", {0}, [](const auto& path) {
    TeskFile file;
    WaveOf(file).SetWaveStyle(TeskWaveEffect::kRiseAndFall, nullptr);
    TeskWriteMovie(file, path);
});
const playback::PlaybackMovie kWhole("wave_whole_object", {0}, [](const auto& path) {
    TeskFile file;
    const TeskLightModel light = WaveOf(file).GetLightModel();
    ZoFlash::ZoSWFColourTransformation ct;
    light.ApplyLight(light.LightFactor({0, 0, 1}), ct);
    ZoAutoPtr<TeskObject> object = WaveOf(file).GetWaveObject()->Clone();
    file.RemoveEffect(0, nullptr);
    ZoAutoPtr<TeskSWFMovie> movie = TeskBuildMovie(file);  // one frame, the document's header
    const ZoRect rect{0, 0, 20 * file.GetWidth(), 20 * file.GetHeight()};
    movie->GetScene(0)->GetFrame(0)->PlaceObject(object->MakeShape(*movie, rect), nullptr, 100, {},
                                                 0, -1, ct);
    movie->SetFilename(path.string().c_str());
    movie->WriteMovieFile();
});

// Whether pixel (x, y) lies inside the moved mesh, `margin` pixels clear of
// the moved outline (the moved edges of pieces on the object's border).
bool InsideObject(const TeskMeshEffect::MeshTriangleList& mesh, const ZoRect& rect, int x, int y,
                  double margin) {
    const double px = (x + 0.5) * 20.0, py = (y + 0.5) * 20.0;
    bool covered = false;
    for (const auto& t : mesh) {
        covered = covered || effect_test::Inside({t.corners.begin(), t.corners.end()}, px, py);
        for (int k = 0; k < 3; ++k) {
            const ZoPoint p = t.restCorners[k], q = t.restCorners[(k + 1) % 3];
            const bool border = (p.x == q.x && (p.x == rect.left || p.x == rect.right)) ||
                                (p.y == q.y && (p.y == rect.top || p.y == rect.bottom));
            if (border && effect_test::DistanceToSegment(t.corners[k], t.corners[(k + 1) % 3], px,
                                                         py) < margin * 20.0)
                return false;
        }
    }
    return covered;
}

TEST(WavePlayback, NoSeamShowsTheBackgroundInsideTheObject) {
    TeskFile file;
    TeskSWFMovie scratch;
    const ZoRect rect{0, 0, 20 * file.GetWidth(), 20 * file.GetHeight()};
    TeskMeshEffect::MeshTriangleList mesh = WaveOf(file).BuildMesh(scratch, rect);
    TeskWaveEffect::CornerLights light;
    for (const int frame : kFrames) {
        SCOPED_TRACE(testing::Message() << "frame " << frame);
        WaveOf(file).MoveMesh(mesh, rect, frame, 24, light);
        const playback::PngImage white = kOnWhite.Frame(frame);
        const playback::PngImage green = kOnGreen.Frame(frame);
        int seams = 0, outside = 0;
        for (int y = 0; y < white.Height(); ++y) {
            for (int x = 0; x < white.Width(); ++x) {
                const playback::Rgba w = white.At(x, y);
                if (playback::ChannelDistance(green.At(x, y), {w.r, w.g, w.b}) <= 2)
                    continue;
                const bool inside = InsideObject(mesh, rect, x, y, 2.0);
                if (inside && seams == 0)
                    ADD_FAILURE() << "the background shows at (" << x << ", " << y << ")";
                (inside ? seams : outside)++;
            }
        }
        EXPECT_EQ(seams, 0);
        // The check sees the background: the wave pulls parts of the border in.
        EXPECT_GT(outside, 0);
    }
}

TEST(WavePlayback, AFlatFirstFrameLooksLikeTheWholeObjectUnderItsLight) {
    const auto difference = playback::CompareFrames(kRising.Frame(0), kWhole.Frame(0), 6);
    EXPECT_EQ(difference.differing, 0) << "largest " << difference.largest << " first at ("
                                       << difference.firstX << ", " << difference.firstY << ")";
}

}  // namespace
