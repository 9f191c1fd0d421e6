#include "flash/swf_sequence.h"

#include "platform/zo_exception.h"

namespace ZoFlash {

ZoSWFSequence::~ZoSWFSequence() = default;

ZoSWFFrame* ZoSWFSequence::AddFrame() {
    // Effects place much the same objects in every frame.
    ZoSWFFrame* frame = frames_.emplace_back(std::make_unique<ZoSWFFrame>()).get();
    if (frames_.size() > 1)
        frame->ReserveLike(*frames_[frames_.size() - 2]);
    return frame;
}

ZoSWFFrame* ZoSWFSequence::InsertFrame(int index) {
    if (index < 0 || index > TotalFrames())
        throw ZoException(
            ZoFormat("Cannot insert frame %d into a sequence of %d frames.", index, TotalFrames()));
    return frames_.insert(frames_.begin() + index, std::make_unique<ZoSWFFrame>())->get();
}

ZoSWFFrame* ZoSWFSequence::GetFrame(int index) const noexcept {
    if (index < 0 || index >= TotalFrames())
        return nullptr;
    return frames_[index].get();
}

ZoSWFFrame* ZoSWFSequence::GetLastFrame() const noexcept {
    return frames_.empty() ? nullptr : frames_.back().get();
}

}  // namespace ZoFlash
