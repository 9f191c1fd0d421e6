#pragma once
#include <cstdint>

#include "editor/update_hint.h"

class TeskEffect;

/// What happened to an effect.
enum TeskEffectHintKind : uint32_t {
    kTeskEffectInserted = 0,  // index: its position
    kTeskEffectRemoved = 1,   // index: its former position
    kTeskEffectChanged = 2,   // index: -1
    kTeskEffectReplaced = 3,  // index: its position
};

class TeskEffectUpdateHint : public ZoEditor::ZoUpdateHint {
  public:
    TeskEffectUpdateHint(TeskEffect* effect, uint32_t kind, int32_t index) noexcept
        : effect_(effect), kind_(kind), index_(index) {}

    TeskEffect* GetEffect() const noexcept { return effect_; }
    uint32_t GetKind() const noexcept { return kind_; }
    int32_t GetIndex() const noexcept { return index_; }

    /// The kind an observer should act on: an undone insertion is a removal
    /// and the other way round, a replacement stays one, anything else is a
    /// change of settings.
    uint32_t GetKind(bool reversed) const noexcept;

  private:
    TeskEffect* effect_;
    uint32_t kind_;
    int32_t index_;
};
