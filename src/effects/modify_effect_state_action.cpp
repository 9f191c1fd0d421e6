#include "effects/modify_effect_state_action.h"

bool TeskModifyEffectStateAction::Do() {
    effect_.SwapState(state_);
    return true;
}

bool TeskModifyEffectStateAction::Undo() {
    return Do();
}
