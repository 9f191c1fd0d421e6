// The curl up sheet: flat at the start, laid over face down at the end, and
// drawn back to front in between.
#include "effects/curl_up_effect.h"

#include <gtest/gtest.h>

#include "effects/curl_sheet.h"

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

TEST(CurlSheetTest, ReverseCurlPlaysTheFramesBackwards) {
    for (int32_t i = 0; i < 24; ++i) {
        EXPECT_DOUBLE_EQ(TeskCurlSheet::Progress(Curl::kRollUp, i, 24),
                         TeskCurlSheet::Progress(Curl::kForwards | Curl::kRollUp, 23 - i, 24));
    }
    EXPECT_EQ(TeskCurlSheet::Progress(Curl::kForwards, 0, 1), 0.0);
    EXPECT_EQ(TeskCurlSheet::Progress(0, 0, 1), 1.0);
}

}  // namespace
