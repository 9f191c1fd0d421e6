#include "flash/swf_frame.h"

#include "platform/zo_exception.h"

namespace ZoFlash {
namespace {

uint16_t CheckedDepth(int depth) {
    if (depth < 1 || depth > 0xFFFF)
        throw ZoException(ZoFormat("The depth %d is outside 1 to 65535.", depth));
    return static_cast<uint16_t>(depth);
}

}  // namespace

void ZoSWFFrame::PlaceObject(ZoAutoInterface2<ZoSWFObject> object, const char* name, int depth,
                             const ZoSWFTransformation& matrix, int clipDepth, int ratio,
                             const ZoSWFColourTransformation& colour) {
    Place(std::move(object), name, depth, matrix, clipDepth, ratio, colour, false);
}

void ZoSWFFrame::PlaceObjectPermanent(ZoAutoInterface2<ZoSWFObject> object, const char* name,
                                      int depth, const ZoSWFTransformation& matrix, int clipDepth,
                                      int ratio, const ZoSWFColourTransformation& colour) {
    Place(std::move(object), name, depth, matrix, clipDepth, ratio, colour, true);
}

void ZoSWFFrame::Place(ZoAutoInterface2<ZoSWFObject>&& object, const char* name, int depth,
                       const ZoSWFTransformation& matrix, int clipDepth, int ratio,
                       const ZoSWFColourTransformation& colour, bool permanent) {
    if (!object)
        throw ZoException("A null object cannot be placed in a frame.");
    if (ratio < -1 || ratio > 0xFFFF)
        throw ZoException(ZoFormat("The ratio %d is outside 0 to 65535.", ratio));
    ZoSWFPlacement& p = placements_.emplace_back();
    try {
        p.depth = CheckedDepth(depth);
        // Callers pass -1 as well as 0 for "no clipping".
        p.clipDepth = clipDepth > 0 ? CheckedDepth(clipDepth) : 0;
        p.matrix = matrix.ToRecord();
        p.cxform = colour.ToRecord();
    } catch (...) {
        placements_.pop_back();
        throw;
    }
    p.object = std::move(object);
    if (name) {
        p.name = static_cast<int32_t>(names_.size());
        names_.emplace_back(name);
    }
    p.ratio = ratio;
    p.permanent = permanent;
}

void ZoSWFFrame::CopyPlacementsFrom(const ZoSWFFrame* other) {
    if (!other || other == this)
        return;
    const auto nameBase = static_cast<int32_t>(names_.size());
    names_.insert(names_.end(), other->names_.begin(), other->names_.end());
    for (ZoSWFPlacement p : other->placements_) {
        if (p.name >= 0)
            p.name += nameBase;
        placements_.push_back(std::move(p));
    }
}

}  // namespace ZoFlash
