#include <gtest/gtest.h>

#include "render/swf_parser.h"

using namespace ZoRender;

namespace {

PlaceObject2 Place(bool move, std::optional<uint16_t> character, std::optional<int32_t> x) {
    PlaceObject2 p;
    p.move = move;
    p.depth = 5;
    p.characterId = character;
    if (x) {
        p.matrix = Matrix();
        p.matrix->translateX = *x;
    }
    return p;
}

// Character 1 at depth 5, 100 twips along and half transparent, then `next`.
TEST(ApplyPlaceObject, KeepsWhatAMoveLeavesOutEvenWhenItSwapsTheCharacter) {
    const std::tuple<const char*, PlaceObject2, uint16_t, int32_t, int32_t> cases[] = {
        {"move", Place(true, std::nullopt, 40), 1, 40, 128},
        {"swap by a move", Place(true, 2, std::nullopt), 2, 100, 128},
        {"swap with a new matrix", Place(true, 2, 7), 2, 7, 128},
        {"new placement", Place(false, 2, std::nullopt), 2, 0, 256},
    };
    for (const auto& [name, next, character, x, alphaMult] : cases) {
        std::map<uint16_t, DisplayItem> list;
        PlaceObject2 first = Place(false, 1, 100);
        first.cxform = Cxform();
        first.cxform->mult[3] = 128;
        ApplyPlaceObject(list, first);
        ApplyPlaceObject(list, next);
        const DisplayItem& item = list.at(5);
        EXPECT_EQ(item.characterId, character) << name;
        EXPECT_EQ(item.matrix.translateX, x) << name;
        EXPECT_EQ(item.cxform.mult[3], alphaMult) << name;
    }
}

}  // namespace
