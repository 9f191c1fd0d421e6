#pragma once
#include <memory>
#include <vector>

#include "flash/swf_frame.h"

namespace ZoFlash {

/// An ordered list of frames: the base of scenes and sprites. Frame
/// pointers stay valid while the sequence lives.
class ZoSWFSequence {
  public:
    ZoSWFSequence() = default;
    ZoSWFSequence(const ZoSWFSequence&) = delete;
    ZoSWFSequence& operator=(const ZoSWFSequence&) = delete;
    virtual ~ZoSWFSequence();

    /// Appends an empty frame.
    ZoSWFFrame* AddFrame();
    /// Inserts an empty frame so that it becomes frame `index`; later frames
    /// move up by one. Throws ZoException when index is beyond the end.
    ZoSWFFrame* InsertFrame(int index);
    /// Null when `index` is out of range.
    ZoSWFFrame* GetFrame(int index) const noexcept;
    /// Null when there are no frames.
    ZoSWFFrame* GetLastFrame() const noexcept;
    int TotalFrames() const noexcept { return static_cast<int>(frames_.size()); }

  private:
    std::vector<std::unique_ptr<ZoSWFFrame>> frames_;
};

/// One scene of the movie.
class ZoSWFScene : public ZoSWFSequence {};

}  // namespace ZoFlash
