#pragma once
#include "flash/swf_entity.h"
#include "flash/swf_sequence.h"

namespace ZoFlash {

/// A movie clip: its own frames, written as DefineSprite after the
/// characters they use.
class ZoSWFSprite : public ZoSWFObject, public ZoSWFSequence {
  public:
    ZoSWFSprite();
    ~ZoSWFSprite() override;
    void Write(ZoSWFFile& file) override;
    void InitialiseForRewriting() override;
};

}  // namespace ZoFlash
