#include <gtest/gtest.h>

#include <set>

#include "platform/zo_guid.h"

namespace {

constexpr const char* kProjectFileGuid = "{BF954E1B-8A79-4008-BD31-F81D15884DC2}";

TEST(ZoGuid, RegistryFormAndFileBytes) {
    const auto guid = ZoGuid::Parse(kProjectFileGuid);
    ASSERT_TRUE(guid);
    EXPECT_EQ(guid->data1, 0xBF954E1Bu);
    EXPECT_EQ(guid->data2, 0x8A79u);
    EXPECT_EQ(guid->data3, 0x4008u);
    EXPECT_EQ(guid->ToString(), kProjectFileGuid);
    EXPECT_EQ(ZoGuid::Parse("{bf954e1b-8a79-4008-bd31-f81d15884dc2}"), guid);
    // The file holds the in-memory layout: the first three fields little-endian.
    const std::array<uint8_t, 16> bytes = {0x1B, 0x4E, 0x95, 0xBF, 0x79, 0x8A, 0x08, 0x40,
                                           0xBD, 0x31, 0xF8, 0x1D, 0x15, 0x88, 0x4D, 0xC2};
    EXPECT_EQ(guid->ToBytes(), bytes);
    EXPECT_EQ(ZoGuid::FromBytes(bytes), guid);
}

TEST(ZoGuid, RejectsMalformedText) {
    for (const char* text :
         {"", "BF954E1B-8A79-4008-BD31-F81D15884DC2", "{BF954E1B-8A79-4008-BD31-F81D15884DC}",
          "{BF954E1B-8A79-4008-BD31F81D15884DC2-}", "{BF954E1G-8A79-4008-BD31-F81D15884DC2}",
          "(BF954E1B-8A79-4008-BD31-F81D15884DC2)"}) {
        EXPECT_FALSE(ZoGuid::Parse(text)) << text;
    }
}

TEST(ZoGuid, RandomGuidsAreVersion4UniqueAndRoundTrip) {
    std::set<ZoGuid> seen;
    for (int i = 0; i < 1000; ++i) {
        const ZoGuid guid = ZoGuid::NewRandom();
        EXPECT_EQ(guid.data3 >> 12, 4);
        EXPECT_EQ(guid.data4[0] & 0xC0, 0x80);
        EXPECT_EQ(ZoGuid::Parse(guid.ToString()), guid);
        EXPECT_EQ(ZoGuid::FromBytes(guid.ToBytes()), guid);
        seen.insert(guid);
    }
    EXPECT_EQ(seen.size(), 1000u);
}

}  // namespace
