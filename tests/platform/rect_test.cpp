#include <gtest/gtest.h>

#include "platform/zo_rect.h"

namespace {

TEST(ZoRect, SizeEmptinessAndContainment) {
    const ZoRect r{10, 20, 110, 70};
    EXPECT_EQ(r.Width(), 100);
    EXPECT_EQ(r.Height(), 50);
    EXPECT_FALSE(r.IsEmpty());
    EXPECT_TRUE(r.Contains({10, 20}));
    EXPECT_FALSE(r.Contains({110, 20}));  // right edge is exclusive
    EXPECT_FALSE(r.Contains({10, 70}));   // bottom edge is exclusive
    EXPECT_TRUE((ZoRect{5, 5, 5, 9}).IsEmpty());
    EXPECT_TRUE((ZoRect{5, 5, 4, 9}).IsEmpty());
}

TEST(ZoRect, IntersectionAndUnion) {
    struct Case {
        ZoRect a, b, intersection, unite;
    };
    for (const Case& c : {
             Case{{0, 0, 10, 10}, {5, 5, 15, 15}, {5, 5, 10, 10}, {0, 0, 15, 15}},
             Case{{0, 0, 10, 10}, {10, 0, 20, 10}, {}, {0, 0, 20, 10}},  // touching edges
             Case{{0, 0, 10, 10}, {}, {}, {0, 0, 10, 10}},               // empty operand
             Case{{-20, -10, 0, 0}, {-5, -5, 5, 5}, {-5, -5, 0, 0}, {-20, -10, 5, 5}},
         }) {
        EXPECT_EQ(ZoRect::Intersection(c.a, c.b), c.intersection);
        EXPECT_EQ(ZoRect::Intersection(c.b, c.a), c.intersection);
        EXPECT_EQ(ZoRect::Union(c.a, c.b), c.unite);
    }
}

TEST(ZoRect, NormalizeAndOffset) {
    ZoRect r{10, 40, -10, 20};
    r.Normalize();
    EXPECT_EQ(r, (ZoRect{-10, 20, 10, 40}));
    r.Offset(5, -20);
    EXPECT_EQ(r, (ZoRect{-5, 0, 15, 20}));
}

}  // namespace
