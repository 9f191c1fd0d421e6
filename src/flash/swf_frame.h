#pragma once
#include <cstdint>
#include <span>
#include <vector>

#include "flash/action_records.h"
#include "flash/byte_stream.h"
#include "flash/swf_entity.h"
#include "flash/swf_records.h"
#include "flash/swf_transformation.h"
#include "platform/zo_string.h"

namespace ZoFlash {

/// One placement of a frame, read back from the frame's encoded form.
struct ZoSWFPlacement {
    ZoAutoInterface2<ZoSWFObject> object;
    const char* name = nullptr;  // null: none; valid while the frame is unchanged
    int32_t ratio = -1;          // -1: none
    uint16_t depth = 1;
    uint16_t clipDepth = 0;  // 0: ordinary placement
    bool permanent = false;
    ZoFMatrixRecord matrix;
    ZoFCxformRecord cxform;
};

/// One placement as the writer reads it: matrix and colour transform as the
/// bytes PlaceObject2 carries, valid while the frame is left unchanged.
struct ZoSWFEncodedPlacement {
    ZoSWFObject* object;
    std::span<const uint8_t> matrix;  // MATRIX
    std::span<const uint8_t> cxform;  // CXFORMWITHALPHA
    const char* name;                 // null: none
    int32_t ratio;                    // -1: none
    uint16_t depth;
    uint16_t clipDepth;  // 0: ordinary placement
    bool permanent;
};

class ZoSWFFrame;

/// The placements of a frame in the order made, each read back on access.
class ZoSWFPlacementList {
  public:
    class Iterator {
      public:
        Iterator(const ZoSWFFrame& frame, size_t index) noexcept : frame_(&frame), index_(index) {}
        ZoSWFPlacement operator*() const;
        Iterator& operator++() noexcept {
            ++index_;
            return *this;
        }
        friend bool operator==(const Iterator&, const Iterator&) = default;

      private:
        const ZoSWFFrame* frame_;
        size_t index_;
    };

    explicit ZoSWFPlacementList(const ZoSWFFrame& frame) noexcept : frame_(frame) {}
    size_t size() const noexcept;
    bool empty() const noexcept { return size() == 0; }
    ZoSWFPlacement operator[](size_t index) const;
    Iterator begin() const noexcept { return {frame_, 0}; }
    Iterator end() const noexcept { return {frame_, size()}; }

  private:
    const ZoSWFFrame& frame_;
};

/// One frame: a display list of placements plus frame actions. Placements
/// are kept as the records the file will hold, about as many bytes as their
/// PlaceObject2 tags: effects make hundreds of thousands of them.
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
    ZoSWFPlacementList GetPlacements() const noexcept { return ZoSWFPlacementList(*this); }
    size_t GetPlacementCount() const noexcept { return slots_.size(); }
    /// Placement `index` as the writer reads it.
    ZoSWFEncodedPlacement GetEncodedPlacement(size_t index) const noexcept;
    /// Placement `index` read back into records.
    ZoSWFPlacement GetPlacement(size_t index) const;
    /// Room for `count` placements, so that a frame filled in a loop does
    /// not grow step by step.
    void ReservePlacements(size_t count);
    /// Room for as many placements as `other` holds, of the same size.
    void ReserveLike(const ZoSWFFrame& other);

  private:
    static constexpr uint8_t kPermanent = 1, kExtras = 2;  // Slot::flags
    // 16 bytes; the records follow in bytes_ at `offset`: MATRIX,
    // CXFORMWITHALPHA and, when flagged, ratio (i32), name index (i32) and
    // clip depth (u16).
    struct Slot {
        ZoAutoInterface2<ZoSWFObject> object;
        uint32_t offset;
        uint16_t depth;
        uint8_t matrixSize;
        uint8_t flags;
    };
    void Place(ZoAutoInterface2<ZoSWFObject>&& object, const char* name, int depth,
               const ZoSWFTransformation& matrix, int clipDepth, int ratio,
               const ZoSWFColourTransformation& colour, bool permanent);
    void ReadExtras(ZoSWFEncodedPlacement& placement) const noexcept;
    // Where the next slot's records start; throws beyond 32-bit offsets.
    uint32_t NextOffset() const;
    // Appends what few placements have beyond depth and records.
    void AppendExtras(Slot& slot, int32_t ratio, const char* name, uint16_t clipDepth);
    std::vector<Slot> slots_;
    ZoFByteBuffer bytes_;
    std::vector<ZoString> names_;
    ZoFActionList actions_;
    bool stop_ = false;
};

// Inline: the writer reads every placement a few times.
inline ZoSWFEncodedPlacement ZoSWFFrame::GetEncodedPlacement(size_t index) const noexcept {
    const Slot& slot = slots_[index];
    const uint8_t* matrix = bytes_.Bytes().data() + slot.offset;
    const uint8_t* cxform = matrix + slot.matrixSize;
    ZoSWFEncodedPlacement p{slot.object.Get(),
                            {matrix, slot.matrixSize},
                            {cxform, ZoCxformWithAlphaSize(*cxform)},
                            nullptr,
                            -1,
                            slot.depth,
                            0,
                            (slot.flags & kPermanent) != 0};
    if (slot.flags & kExtras)
        ReadExtras(p);
    return p;
}

}  // namespace ZoFlash
