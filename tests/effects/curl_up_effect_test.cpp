// The curl up sheet: flat at the start, laid over face down at the end, and
// drawn back to front in between.
#include "effects/curl_up_effect.h"

#include <gtest/gtest.h>

#include <numbers>

#include "effects/curl_sheet.h"
#include "media/swf_movie.h"

namespace {

using Curl = TeskCurlUpEffect;
const ZoRect kRect{0, 0, 800, 600};

std::vector<ZoPoint> GridPoints() {
    std::vector<ZoPoint> points;
    for (int32_t x = 0; x <= 800; x += 100) {
        for (int32_t y = 0; y <= 600; y += 100)
            points.push_back({x, y});
    }
    return points;
}

TEST(CurlSheetTest, EveryDirectionStartsFlat) {
    for (const uint32_t style : {Curl::kForwards | Curl::kRollUp, Curl::kForwards | Curl::kTearAway,
                                 Curl::kForwards | Curl::kUnderneath}) {
        for (int32_t direction = 0; direction < 360; direction += 15) {
            const TeskCurlSheet sheet(direction, 15, style, kRect, 0.0);
            for (const ZoPoint p : GridPoints()) {
                const TeskSurfacePoint at = sheet.At(p);
                const TeskPoint3D rest{p.x - 400.0, p.y - 300.0, 0.0};
                ASSERT_NEAR(TeskLength(at.position - rest), 0.0, 1e-9)
                    << direction << " " << p.x << ", " << p.y;
                ASSERT_NEAR(at.normal.z, 1.0, 1e-12);
            }
        }
    }
}

TEST(CurlSheetTest, TornAwayTheSheetEndsFaceDownBeyondTheFarSide) {
    const TeskCurlSheet sheet(90, 10, Curl::kForwards | Curl::kTearAway, kRect, 1.0);
    EXPECT_DOUBLE_EQ(sheet.Radius(), 80.0);
    for (const ZoPoint p : GridPoints()) {
        const TeskSurfacePoint at = sheet.At(p);
        EXPECT_EQ(at.normal, (TeskPoint3D{0, 0, -1}));
        EXPECT_DOUBLE_EQ(at.position.z, 160.0);
        // Over the line, which lies π·r beyond the right edge, by what is
        // left after half a turn round the cylinder.
        const double line = 400.0 + std::numbers::pi * 80.0;
        const double behind = line - (p.x - 400.0);
        EXPECT_NEAR(at.position.x, line + behind - std::numbers::pi * 80.0, 1e-9);
        EXPECT_NEAR(at.position.y, p.y - 300.0, 1e-9);
    }
    const TeskCurlSheet under(90, 10, Curl::kForwards | Curl::kTearAway | Curl::kUnderneath, kRect,
                              0.5);
    EXPECT_LT(under.At({0, 0}).position.z, 0.0);
    EXPECT_EQ(under.At({800, 0}).position.z, 0.0);
}

TEST(CurlSheetTest, ReverseCurlPlaysTheFramesBackwards) {
    for (int32_t i = 0; i < 24; ++i) {
        EXPECT_DOUBLE_EQ(TeskCurlSheet::Progress(Curl::kRollUp, i, 24),
                         TeskCurlSheet::Progress(Curl::kForwards | Curl::kRollUp, 23 - i, 24));
    }
    EXPECT_EQ(TeskCurlSheet::Progress(Curl::kForwards, 0, 1), 0.0);
    EXPECT_EQ(TeskCurlSheet::Progress(0, 0, 1), 1.0);
}

// Direction 135 folds from the top left towards the bottom right; the
// triangles and their light triangles are stacked by their nearest corner.
TEST(CurlUpEffectTest, TrianglesAreStackedBackToFrontUnderTheirLight) {
    Curl curl;
    TeskSWFMovie movie;
    const ZoRect rect{0, 0, 2000, 1600};
    Curl::MeshTriangleList mesh = curl.BuildMesh(movie, rect);
    ASSERT_GT(mesh.size(), 20u);
    Curl::LightOverlays overlays;
    curl.MoveMesh(mesh, rect, 10, 24, overlays);
    const TeskCurlSheet sheet(135, 15, curl.GetStyle(), rect, 10.0 / 23.0);
    std::vector<double> nearest;
    for (const auto& triangle : mesh) {
        double z = -1e9;
        for (const ZoPoint p : triangle.restCorners)
            z = std::max(z, sheet.At(p).position.z);
        nearest.push_back(z);
    }
    EXPECT_GT(nearest.front(), 0.0);  // the top left has lifted
    EXPECT_EQ(nearest.back(), 0.0);   // the bottom right lies flat
    for (size_t i = 0; i < mesh.size(); ++i) {
        EXPECT_GT(overlays[i].depth, mesh[i].depth);
        EXPECT_EQ(overlays[i].corners, mesh[i].corners);
        for (size_t j = 0; j < mesh.size(); ++j) {
            if (nearest[i] < nearest[j]) {
                EXPECT_LT(mesh[i].depth, mesh[j].depth) << i << " " << j;
            }
        }
    }
}

}  // namespace
