#pragma once
// Movies of objects' characters placed side by side in one frame, written
// and read back with the test SWF reader.
#include <vector>

#include "flash/swf_sequence.h"
#include "media/swf_movie.h"
#include "support/movie_check.h"

namespace objects_test {

using Placed = std::vector<ZoAutoInterface2<ZoFlash::ZoSWFObject>>;

/// The movie of `objects` placed at depths 1, 2, ... of one frame.
inline SwfTest::WrittenMovie WritePlaced(TeskSWFMovie& movie, const Placed& objects) {
    auto* frame = movie.AddScene()->AddFrame();
    int depth = 1;
    for (const auto& object : objects)
        frame->PlaceObject(object, nullptr, depth++, {}, 0, -1, {});
    return SwfTest::WriteAndValidate(movie);
}

/// The characters placed in the first frame, bottom first.
inline std::vector<uint16_t> PlacedIds(const SwfTest::Movie& movie) {
    std::vector<uint16_t> ids;
    for (const auto& [depth, item] : movie.timeline.frames.at(0).displayList)
        ids.push_back(item.characterId);
    return ids;
}

}  // namespace objects_test
