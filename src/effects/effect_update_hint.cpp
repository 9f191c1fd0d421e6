#include "effects/effect_update_hint.h"

uint32_t TeskEffectUpdateHint::GetKind(bool reversed) const noexcept {
    if (!reversed)
        return kind_;
    switch (kind_) {
        case kTeskEffectInserted:
            return kTeskEffectRemoved;
        case kTeskEffectRemoved:
            return kTeskEffectInserted;
        case kTeskEffectReplaced:
            return kTeskEffectReplaced;
        default:
            return kTeskEffectChanged;
    }
}
