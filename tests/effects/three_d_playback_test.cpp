// The cube, curl up, explode and twist effects as a real player draws them:
// each with its default settings, a red object over a blue background
// object, in its first, middle and last frame. The object must look whole
// where the effect leaves it flat, no seam may let the background through,
// and each effect must end as it promises.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

#include "document/file.h"
#include "effects/cube_effect.h"
#include "effects/curl_up_effect.h"
#include "effects/explode_effect.h"
#include "effects/twist_effect.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "pixel_misses.h"
#include "playback/pixel_checks.h"
#include "playback/playback_movie.h"
#include "publish/movie_compiler.h"

namespace {

using effect_test::AtMost;
using effect_test::CountMisses;
using effect_test::DistanceToSegment;
using effect_test::Everywhere;
using effect_test::Inside;
using playback::PngImage;
using playback::Rgb;

constexpr int kWidth = 160, kHeight = 120;
const ZoRect kRect{0, 0, 20 * kWidth, 20 * kHeight};
const std::vector<int> kFrames{0, 12, 23};
const Rgb kBlue{0, 0, 255};

// Makes `file` a document of the default effect `E` turning a red object
// over a blue one.
template <typename E>
void MakeDocument(TeskFile& file) {
    ZoAutoPtr<TeskObject> blue = std::make_unique<TeskSolidObject>(0xFF0000);
    file.SetBackgroundObject(blue, nullptr);
    file.SetWidth(kWidth, nullptr);
    file.SetHeight(kHeight, nullptr);
    ZoAutoPtr<TeskEffect> effect = std::make_unique<E>();
    ZoAutoPtr<TeskObject> red = std::make_unique<TeskSolidObject>(0x0000FF);
    effect->SetObject(red, 0);
    file.RemoveEffect(0, nullptr);
    file.InsertEffect(effect, 0, nullptr);
}

template <typename E>
E& EffectOf(const TeskFile& file) {
    return dynamic_cast<E&>(*file.GetEffect(0));
}

template <typename E>
playback::PlaybackMovie Movie(const char* name) {
    return playback::PlaybackMovie(name, kFrames, [](const auto& path) {
        TeskFile file;
        MakeDocument<E>(file);
        TeskWriteMovie(file, path);
    });
}

const auto kCube = Movie<TeskCubeEffect>("cube");
const auto kCurlUp = Movie<TeskCurlUpEffect>("curl_up");
const auto kExplode = Movie<TeskExplodeEffect>("explode");
const auto kTwist = Movie<TeskTwistEffect>("twist");

// Red facing the viewer under the default light: blended by its strength
// towards the light's colour.
Rgb LitRed() {
    const TeskLightModel light{TeskLighting{}};
    const TeskLightColour c = light.LightColour(light.LightFactor({0, 0, 1}));
    const auto mix = [&](int object, int lightChannel) {
        return static_cast<std::uint8_t>(object + (lightChannel - object) * c.strength / 255.0 +
                                         0.5);
    };
    return {mix(255, c.red), mix(0, c.green), mix(0, c.blue)};
}

bool IsBlue(playback::Rgba p) {
    return playback::ChannelDistance(p, kBlue) <= 24;
}
// Red under any light the defaults give: darker or paler, never blue.
bool IsLitRed(playback::Rgba p) {
    return p.r >= 140 && p.g <= 70 && p.b <= 70 && std::abs(p.g - p.b) <= 8;
}
// Red however often it is shaded (smooth shading lays the light of hidden
// pieces over visible ones too), with at most `share` of the background
// showing through.
bool MostlyObject(playback::Rgba p, double share) {
    return p.b - p.g <= share * 255.0 && p.r >= 60;
}

bool NearlyEqual(playback::Rgba p, Rgb expected) {
    return playback::ChannelDistance(p, expected) <= 6;
}

TEST(ThreeDPlayback, CurlUpStartsWholeAndPeelsAwayFromTheTopLeft) {
    const Rgb lit = LitRed();
    EXPECT_TRUE(AtMost(
        0, CountMisses(kCurlUp.Frame(0), Everywhere, [&](auto p) { return NearlyEqual(p, lit); })));
    const PngImage middle = kCurlUp.Frame(12);
    EXPECT_TRUE(IsBlue(middle.At(3, 3)));
    EXPECT_TRUE(NearlyEqual(middle.At(kWidth - 4, kHeight - 4), lit));
    EXPECT_TRUE(AtMost(0, CountMisses(kCurlUp.Frame(23), Everywhere, IsBlue)));
}

TEST(ThreeDPlayback, ExplodeStartsWholeAndEndsWithEveryPiecePastTheEye) {
    const Rgb lit = LitRed();
    EXPECT_TRUE(AtMost(0, CountMisses(kExplode.Frame(0), Everywhere,
                                      [&](auto p) { return NearlyEqual(p, lit); })));
    const PngImage middle = kExplode.Frame(12);
    const int notBlue = CountMisses(middle, Everywhere, IsBlue).count;
    EXPECT_GT(notBlue, 0);
    EXPECT_LT(notBlue, kWidth * kHeight);
    EXPECT_TRUE(AtMost(0, CountMisses(kExplode.Frame(23), Everywhere, IsBlue)));
}

// The convex hull, clockwise on screen, of every corner of the cube's faces.
std::vector<ZoPoint> CubeOutline(int frame) {
    TeskFile file;
    MakeDocument<TeskCubeEffect>(file);
    TeskSWFMovie scratch;
    TeskCubeEffect& cube = EffectOf<TeskCubeEffect>(file);
    TeskCubeEffect::FaceMeshes meshes = cube.BuildMeshes(scratch, kRect);
    cube.MoveFaces(meshes, kRect, frame, 24);
    std::vector<ZoPoint> points;
    for (const auto& mesh : meshes) {
        for (const auto& triangle : mesh)
            points.insert(points.end(), triangle.corners.begin(), triangle.corners.end());
    }
    std::sort(points.begin(), points.end(),
              [](ZoPoint a, ZoPoint b) { return a.x != b.x ? a.x < b.x : a.y < b.y; });
    const auto turn = [](ZoPoint o, ZoPoint a, ZoPoint b) {
        return int64_t{a.x - o.x} * (b.y - o.y) - int64_t{a.y - o.y} * (b.x - o.x);
    };
    std::vector<ZoPoint> hull(2 * points.size());
    size_t k = 0;
    for (int pass = 0; pass < 2; ++pass) {
        const size_t start = k;
        for (const ZoPoint p : points) {
            while (k >= start + 2 && turn(hull[k - 2], hull[k - 1], p) <= 0)
                --k;
            hull[k++] = p;
        }
        --k;
        std::reverse(points.begin(), points.end());
    }
    hull.resize(k);
    return hull;
}

TEST(ThreeDPlayback, TheCubeIsClosedAndLitRedWhereverItStands) {
    for (const int frame : kFrames) {
        SCOPED_TRACE(frame);
        const PngImage picture = kCube.Frame(frame);
        const std::vector<ZoPoint> outline = CubeOutline(frame);
        // Two pixels clear of the outline, nothing shows the background.
        const auto deepInside = [&](int x, int y) {
            const double px = (x + 0.5) * 20.0, py = (y + 0.5) * 20.0;
            if (!Inside(outline, px, py))
                return false;
            for (size_t k = 0; k < outline.size(); ++k) {
                if (DistanceToSegment(outline[k], outline[(k + 1) % outline.size()], px, py) < 40.0)
                    return false;
            }
            return true;
        };
        // Faces overlap where they meet: not even a hairline of the
        // background shows between them.
        EXPECT_TRUE(AtMost(
            0, CountMisses(picture, deepInside, [](auto p) { return MostlyObject(p, 0.01); })));
        EXPECT_TRUE(IsLitRed(picture.At(kWidth / 2, kHeight / 2)));
        EXPECT_TRUE(IsBlue(picture.At(2, 2)));
        EXPECT_TRUE(IsBlue(picture.At(kWidth - 3, kHeight - 3)));
    }
}

// A pixel inside the moved mesh of the twist, two pixels clear of its moved
// outline and of every piece turned nearly edge on (through which the
// background may rightly show).
bool InsideTwistedRibbon(const TeskMeshEffect::MeshTriangleList& mesh, int x, int y) {
    const double px = (x + 0.5) * 20.0, py = (y + 0.5) * 20.0;
    bool covered = false;
    for (const auto& t : mesh) {
        const auto area = [](const TeskTriangle& c) {
            return std::abs(double(c[1].x - c[0].x) * (c[2].y - c[0].y) -
                            double(c[1].y - c[0].y) * (c[2].x - c[0].x));
        };
        const bool sliver = area(t.corners) < 0.3 * area(t.restCorners);
        for (int k = 0; k < 3; ++k) {
            const ZoPoint p = t.restCorners[k], q = t.restCorners[(k + 1) % 3];
            const bool border = (p.x == q.x && (p.x == kRect.left || p.x == kRect.right)) ||
                                (p.y == q.y && (p.y == kRect.top || p.y == kRect.bottom));
            if ((border || sliver) &&
                DistanceToSegment(t.corners[k], t.corners[(k + 1) % 3], px, py) < 40.0)
                return false;
        }
        covered = covered || (!sliver && Inside({t.corners.begin(), t.corners.end()}, px, py));
    }
    return covered;
}

TEST(ThreeDPlayback, TheTwistKeepsEndAAndShowsTheBackgroundWhereItStandsEdgeOn) {
    TeskFile file;
    MakeDocument<TeskTwistEffect>(file);
    TeskTwistEffect& twist = EffectOf<TeskTwistEffect>(file);
    TeskSWFMovie scratch;
    TeskMeshEffect::MeshTriangleList mesh = twist.BuildMesh(scratch, kRect);
    TeskTwistEffect::CornerLights light;
    for (const int frame : kFrames) {
        SCOPED_TRACE(frame);
        const PngImage picture = kTwist.Frame(frame);
        twist.MoveMesh(mesh, kRect, frame, 24, light);
        EXPECT_TRUE(
            AtMost(0, CountMisses(
                          picture, [&](int x, int y) { return InsideTwistedRibbon(mesh, x, y); },
                          [](auto p) { return MostlyObject(p, 0.05); })));
        // Half way up the axis the ribbon stands edge on.
        EXPECT_TRUE(IsBlue(picture.At(3, kHeight / 2)));
        EXPECT_TRUE(IsBlue(picture.At(kWidth - 4, kHeight / 2)));
    }
    // At first the bottom end is untouched and the top end mirrored.
    const PngImage first = kTwist.Frame(0);
    for (const auto& [x, y] : {std::pair{3, kHeight - 3}, {kWidth - 4, kHeight - 3}, {3, 2}})
        EXPECT_TRUE(IsLitRed(first.At(x, y))) << x << ", " << y;
}

}  // namespace
