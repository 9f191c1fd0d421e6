#include <gtest/gtest.h>

#include "platform/zo_random.h"

namespace {

TEST(ZoMsvcRandom, SeedOneGivesTheRuntimeLibrarySequenceAndReseedingRestartsIt) {
    const std::vector<int> expected = {41,    18467, 6334,  26500, 19169,
                                       15724, 11478, 29358, 26962, 24464};
    ZoMsvcRandom random(1);
    for (int round = 0; round < 2; ++round) {
        for (const int value : expected) {
            EXPECT_EQ(random.Next(), value) << "round " << round;
        }
        random.Seed(1);
    }
    // Values stay within 15 bits.
    random.Seed(7);
    for (int i = 0; i < 1000; ++i) {
        const int value = random.Next();
        ASSERT_GE(value, 0);
        ASSERT_LE(value, ZoMsvcRandom::kMax);
    }
}

}  // namespace
