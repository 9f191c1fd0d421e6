#pragma once
// Pixel counts and shapes in twips for the effects' playback checks.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "platform/zo_rect.h"
#include "playback/png_image.h"

namespace effect_test {

/// How many pixels missed, the first few spelt out.
struct Misses {
    int count = 0;
    std::string first;
};

/// The pixels (x, y) of `frame` for which `where` holds and whose colour fails `is`.
inline Misses CountMisses(const playback::PngImage& frame,
                          const std::function<bool(int, int)>& where,
                          const std::function<bool(playback::Rgba)>& is) {
    Misses misses;
    for (int y = 0; y < frame.Height(); ++y) {
        for (int x = 0; x < frame.Width(); ++x) {
            const playback::Rgba p = frame.At(x, y);
            if (!where(x, y) || is(p) || misses.count++ >= 3)
                continue;
            misses.first += "(" + std::to_string(x) + ", " + std::to_string(y) + ") shows " +
                            std::to_string(p.r) + " " + std::to_string(p.g) + " " +
                            std::to_string(p.b) + "; ";
        }
    }
    return misses;
}

inline bool Everywhere(int, int) {
    return true;
}

inline testing::AssertionResult AtMost(int allowed, const Misses& misses) {
    if (misses.count <= allowed)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << misses.count << " pixels, " << misses.first;
}

/// Whether (x, y) lies in the convex polygon `convex`, clockwise on screen.
inline bool Inside(const std::vector<ZoPoint>& convex, double x, double y) {
    for (size_t k = 0; k < convex.size(); ++k) {
        const ZoPoint a = convex[k], b = convex[(k + 1) % convex.size()];
        if ((b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x) < 0.0)
            return false;
    }
    return true;
}

inline double DistanceToSegment(ZoPoint a, ZoPoint b, double x, double y) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double length = dx * dx + dy * dy;
    const double s =
        length > 0.0 ? std::clamp(((x - a.x) * dx + (y - a.y) * dy) / length, 0.0, 1.0) : 0.0;
    return std::hypot(x - a.x - s * dx, y - a.y - s * dy);
}

}  // namespace effect_test
