#pragma once
#include <cstdint>
#include <span>
#include <vector>

#include "flash/action_records.h"
#include "flash/swf_entity.h"
#include "flash/swf_records.h"
#include "flash/swf_transformation.h"
#include "platform/zo_string.h"

namespace ZoFlash {

/// One placement on a frame's display list, with matrix and colour
/// transform already in their record form (what the file will hold). Kept
/// small: effects make hundreds of thousands of them.
struct ZoSWFPlacement {
    ZoAutoInterface2<ZoSWFObject> object;
    int32_t ratio = -1;  // -1: none
    int32_t name = -1;   // index into the frame's names; -1: none
    uint16_t depth = 1;
    uint16_t clipDepth = 0;  // 0: ordinary placement
    bool permanent = false;
    ZoFCxformRecord cxform;
    ZoFMatrixRecord matrix;
};

/// One frame: a display list of placements plus frame actions.
class ZoSWFFrame {
  public:
    /// Puts `object` at `depth` (1 is the bottom) in this frame only. `name`
    /// may be null. `clipDepth` > 0 makes a mask over depths up to
    /// clipDepth; `ratio` -1 means none. A second placement at the same depth
    /// replaces the first. Throws ZoException for a null object, a depth or
    /// clip depth outside 1..65535, or a matrix beyond the record's range.
    void PlaceObject(ZoAutoInterface2<ZoSWFObject> object, const char* name, int depth,
                     const ZoSWFTransformation& matrix, int clipDepth, int ratio,
                     const ZoSWFColourTransformation& colour);
    /// As PlaceObject, but the placement stays in every following frame of
    /// the sequence until another object is placed at its depth.
    void PlaceObjectPermanent(ZoAutoInterface2<ZoSWFObject> object, const char* name, int depth,
                              const ZoSWFTransformation& matrix, int clipDepth, int ratio,
                              const ZoSWFColourTransformation& colour);
    /// Gives this frame all of `other`'s placements.
    void CopyPlacementsFrom(const ZoSWFFrame* other);
    /// Playback of the sequence halts at this frame.
    void SetStopFrame() noexcept { stop_ = true; }
    bool IsStopFrame() const noexcept { return stop_; }

    /// Frame actions, run when the frame is shown (after the Stop, if any).
    ZoFActionList& GetActions() noexcept { return actions_; }
    const ZoFActionList& GetActions() const noexcept { return actions_; }

    /// Placements in the order made; a later one at a depth wins.
    std::span<const ZoSWFPlacement> GetPlacements() const noexcept { return placements_; }
    /// The instance name of a placement of this frame; null when none.
    const char* GetName(const ZoSWFPlacement& placement) const noexcept {
        return placement.name < 0 ? nullptr : names_[placement.name].c_str();
    }
    /// Room for `count` placements, so that a frame filled in a loop does
    /// not grow step by step.
    void ReservePlacements(size_t count) { placements_.reserve(count); }

  private:
    void Place(ZoAutoInterface2<ZoSWFObject>&& object, const char* name, int depth,
               const ZoSWFTransformation& matrix, int clipDepth, int ratio,
               const ZoSWFColourTransformation& colour, bool permanent);
    std::vector<ZoSWFPlacement> placements_;
    std::vector<ZoString> names_;
    ZoFActionList actions_;
    bool stop_ = false;
};

}  // namespace ZoFlash
