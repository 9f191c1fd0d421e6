#include <gtest/gtest.h>

#include "render/swf_parser.h"

using namespace ZoRender;

namespace {

Matrix Moved(int32_t x) {
    Matrix m;
    m.translateX = x;
    return m;
}

Cxform Halved() {
    Cxform c;
    c.hasMult = true;
    c.mult[3] = 128;
    return c;
}

PlaceObject2 Place(bool move, std::optional<uint16_t> character, std::optional<Matrix> matrix,
                   std::optional<Cxform> cxform = std::nullopt) {
    PlaceObject2 p;
    p.move = move;
    p.depth = 5;
    p.characterId = character;
    p.matrix = matrix;
    p.cxform = cxform;
    return p;
}

// The display list after placing character 1 at depth 5, moved by 100
// twips and half transparent, then `next` at the same depth.
TEST(ApplyPlaceObject, KeepsWhatAMoveLeavesOutEvenWhenItSwapsTheCharacter) {
    struct Case {
        const char* name;
        PlaceObject2 next;
        uint16_t character;
        int32_t x;
        int32_t alphaMult;
    };
    const Case cases[] = {
        {"move", Place(true, std::nullopt, Moved(40)), 1, 40, 128},
        {"swap by a move", Place(true, 2, std::nullopt), 2, 100, 128},
        {"swap with a new matrix", Place(true, 2, Moved(7)), 2, 7, 128},
        {"new placement", Place(false, 2, std::nullopt), 2, 0, 256},
    };
    for (const Case& c : cases) {
        std::map<uint16_t, DisplayItem> list;
        ApplyPlaceObject(list, Place(false, 1, Moved(100), Halved()));
        ApplyPlaceObject(list, c.next);
        ASSERT_EQ(list.size(), 1u) << c.name;
        const DisplayItem& item = list.at(5);
        EXPECT_EQ(item.characterId, c.character) << c.name;
        EXPECT_EQ(item.matrix.translateX, c.x) << c.name;
        EXPECT_EQ(item.cxform.mult[3], c.alphaMult) << c.name;
    }
}

}  // namespace
