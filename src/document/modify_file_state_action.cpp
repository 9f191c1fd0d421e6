#include "document/modify_file_state_action.h"

bool TeskModifyFileStateAction::Do() {
    document_.SwapState(state_);
    return true;
}

bool TeskModifyFileStateAction::Undo() {
    return Do();
}
