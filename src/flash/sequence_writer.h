#pragma once
// Turns frames into control tags: each frame's display list is compared with
// the one shown before it, and only the difference is written.
#include <span>
#include <utility>
#include <vector>

#include "flash/byte_stream.h"
#include "flash/swf_sequence.h"
#include "flash/swf_tags.h"

namespace ZoFlash {

class ZoSWFFile;

/// Where the control tags of each frame go: the movie's file or a sprite's
/// body. They come a frame at a time, ShowFrame last.
class ZoFTagOutput {
  public:
    virtual ~ZoFTagOutput() = default;
    virtual void PutFrame(std::span<const uint8_t> tags) = 0;
};

/// A ZoFTagOutput that hands each frame's tags to `put(tags)`.
template <typename Put>
class ZoFTagOutputOf : public ZoFTagOutput {
  public:
    explicit ZoFTagOutputOf(Put put) : put_(std::move(put)) {}
    void PutFrame(std::span<const uint8_t> tags) override { put_(tags); }

  private:
    Put put_;
};

/// Writes the frames of one sequence in order, keeping the display list
/// between calls.
class ZoFSequenceWriter {
  public:
    ZoFSequenceWriter(ZoSWFFile& file, ZoFTagOutput& out) noexcept : file_(file), out_(out) {}

    /// Defines every character `frame` places that the file does not hold
    /// yet, then writes PlaceObject2 / RemoveObject2 for what changed,
    /// DoAction and ShowFrame to the output.
    void WriteFrame(const ZoSWFFrame& frame);
    /// Ends the permanent placements of the sequence written so far, so
    /// that the next sequence starts without them.
    void ForgetPermanents() noexcept { permanents_.clear(); }

  private:
    // Placement `index` of `frame`, which outlives the writing.
    struct Entry {
        const ZoSWFFrame* frame;
        uint32_t index;
        uint16_t depth;
        bool permanent;
        ZoSWFEncodedPlacement Read() const noexcept { return frame->GetEncodedPlacement(index); }
    };
    void CollectFrame(const ZoSWFFrame& frame);
    void MergePermanents();
    void EmitDifferences();
    void EmitChange(const Entry& before, const Entry& now);
    void EmitPlace(const ZoSWFEncodedPlacement& now);
    void EmitMove(const ZoSWFEncodedPlacement& before, const ZoSWFEncodedPlacement& now);
    void EmitReplace(const ZoSWFEncodedPlacement& before, const ZoSWFEncodedPlacement& now);
    void EmitPlaceObject2(const ZoFPlaceObject2Record& record);
    void EmitRemove(uint16_t depth);
    void EmitActions(const ZoSWFFrame& frame);

    ZoSWFFile& file_;
    ZoFTagOutput& out_;
    std::vector<Entry> shown_;       // the display list after the last frame
    std::vector<Entry> permanents_;  // permanent placements still in force
    std::vector<Entry> placed_;      // this frame's own placements, by depth
    bool placesPermanents_ = false;  // some of them permanent
    std::vector<Entry> next_;        // this frame's display list
    std::vector<Entry> scratch_;
    ZoFByteBuffer tags_;  // the frame being written
    ZoFByteBuffer body_;
};

}  // namespace ZoFlash
