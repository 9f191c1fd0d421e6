#include "flash/swf_frame.h"

#include <limits>

#include "platform/zo_exception.h"

namespace ZoFlash {
namespace {

// Encoded records of a typical mesh placement: a turned and scaled matrix
// and a colour transform with both terms.
constexpr size_t kTypicalRecordBytes = 24;

uint16_t CheckedDepth(int depth) {
    if (depth < 1 || depth > 0xFFFF)
        throw ZoException(ZoFormat("The depth %d is outside 1 to 65535.", depth));
    return static_cast<uint16_t>(depth);
}

int32_t ReadI32(const uint8_t* at) noexcept {
    return static_cast<int32_t>(at[0] | at[1] << 8 | at[2] << 16 |
                                static_cast<uint32_t>(at[3]) << 24);
}

}  // namespace

ZoSWFPlacement ZoSWFPlacementList::Iterator::operator*() const {
    return frame_->GetPlacement(index_);
}

size_t ZoSWFPlacementList::size() const noexcept {
    return frame_.GetPlacementCount();
}

ZoSWFPlacement ZoSWFPlacementList::operator[](size_t index) const {
    return frame_.GetPlacement(index);
}

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
    const uint16_t checkedDepth = CheckedDepth(depth);
    // Callers pass -1 as well as 0 for "no clipping".
    const uint16_t checkedClip = clipDepth > 0 ? CheckedDepth(clipDepth) : 0;
    const ZoFMatrixRecord matrixRecord = matrix.ToRecord();
    const ZoFCxformRecord cxformRecord = colour.ToRecord();

    Slot slot{std::move(object), NextOffset(), checkedDepth, 0,
              permanent ? kPermanent : uint8_t{0}};
    ZoWriteMatrix(bytes_, matrixRecord);
    slot.matrixSize = static_cast<uint8_t>(bytes_.Size() - slot.offset);
    ZoWriteCxformWithAlpha(bytes_, cxformRecord);
    if (name || ratio >= 0 || checkedClip > 0)
        AppendExtras(slot, ratio, name, checkedClip);
    slots_.push_back(std::move(slot));
}

uint32_t ZoSWFFrame::NextOffset() const {
    if (bytes_.Size() > std::numeric_limits<uint32_t>::max())
        throw ZoException("A frame cannot hold more than 4 GB of placements.");
    return static_cast<uint32_t>(bytes_.Size());
}

void ZoSWFFrame::AppendExtras(Slot& slot, int32_t ratio, const char* name, uint16_t clipDepth) {
    slot.flags |= kExtras;
    bytes_.PutU32(static_cast<uint32_t>(ratio));
    bytes_.PutU32(static_cast<uint32_t>(name ? static_cast<int32_t>(names_.size()) : -1));
    bytes_.PutU16(clipDepth);
    if (name)
        names_.emplace_back(name);
}

void ZoSWFFrame::ReadExtras(ZoSWFEncodedPlacement& p) const noexcept {
    const uint8_t* extras = p.cxform.data() + p.cxform.size();
    p.ratio = ReadI32(extras);
    const int32_t name = ReadI32(extras + 4);
    p.name = name < 0 ? nullptr : names_[static_cast<size_t>(name)].c_str();
    p.clipDepth = static_cast<uint16_t>(extras[8] | extras[9] << 8);
}

ZoSWFPlacement ZoSWFFrame::GetPlacement(size_t index) const {
    const ZoSWFEncodedPlacement e = GetEncodedPlacement(index);
    return {slots_[index].object,
            e.name,
            e.ratio,
            e.depth,
            e.clipDepth,
            e.permanent,
            ZoReadMatrix(e.matrix),
            ZoReadCxformWithAlpha(e.cxform)};
}

void ZoSWFFrame::ReservePlacements(size_t count) {
    if (count <= slots_.capacity())
        return;
    const size_t perPlacement =
        slots_.empty() ? kTypicalRecordBytes : bytes_.Size() / slots_.size() + 1;
    slots_.reserve(count);
    bytes_.Reserve(count * perPlacement);
}

void ZoSWFFrame::ReserveLike(const ZoSWFFrame& other) {
    slots_.reserve(other.slots_.size());
    // Records of the next frame differ in a few bits here and there; the
    // margin spares the buffer a doubling for that.
    bytes_.Reserve(other.bytes_.Size() + other.bytes_.Size() / 16);
}

void ZoSWFFrame::CopyPlacementsFrom(const ZoSWFFrame* other) {
    if (!other || other == this)
        return;
    for (size_t i = 0; i < other->slots_.size(); ++i) {
        const Slot& from = other->slots_[i];
        const ZoSWFEncodedPlacement e = other->GetEncodedPlacement(i);
        Slot slot{from.object, NextOffset(), e.depth, from.matrixSize, from.flags};
        bytes_.PutBytes(e.matrix);
        bytes_.PutBytes(e.cxform);
        if (slot.flags & kExtras)
            AppendExtras(slot, e.ratio, e.name, e.clipDepth);
        slots_.push_back(std::move(slot));
    }
}

}  // namespace ZoFlash
