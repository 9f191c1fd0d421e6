#include <gtest/gtest.h>

#include "platform/zo_random.h"

namespace {

TEST(ZoMsvcRandom, SeedOneGivesTheRuntimeLibrarySequence) {
    ZoMsvcRandom random(1);
    for (int expected : {41, 18467, 6334, 26500, 19169, 15724, 11478, 29358, 26962, 24464}) {
        EXPECT_EQ(random.Next(), expected);
    }
}

TEST(ZoMsvcRandom, ReseedingRestartsTheSequenceAndValuesStayIn15Bits) {
    ZoMsvcRandom random(7);
    std::vector<int> first;
    for (int i = 0; i < 1000; ++i) {
        const int value = random.Next();
        ASSERT_GE(value, 0);
        ASSERT_LE(value, ZoMsvcRandom::kMax);
        first.push_back(value);
    }
    random.Seed(7);
    for (int value : first)
        EXPECT_EQ(random.Next(), value);
}

}  // namespace
