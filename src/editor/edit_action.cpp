#include "editor/edit_action.h"

namespace ZoEditor {

bool ZoEditAction::Perform() {
    if (done_ || !Do())
        return false;
    done_ = true;
    ++performCount_;
    return true;
}

bool ZoEditAction::Revert() {
    if (!done_ || !Undo())
        return false;
    done_ = false;
    return true;
}

}  // namespace ZoEditor
