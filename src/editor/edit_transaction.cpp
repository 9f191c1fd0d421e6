#include "editor/edit_transaction.h"

namespace ZoEditor {

ZoEditTransaction::~ZoEditTransaction() {
    // The observers never heard of an uncommitted transaction, so rolling it
    // back must not tell them anything either.
    if (!committed_) {
        for (auto it = actions_.rbegin(); it != actions_.rend(); ++it)
            (*it)->Revert();
    }
}

bool ZoEditTransaction::AddAction(ZoAutoPtr<ZoEditAction>& action) {
    ZoAutoPtr<ZoEditAction> taken = std::move(action);
    if (!taken || !taken->Perform())
        return false;
    actions_.push_back(std::move(taken));
    return true;
}

void ZoEditTransaction::AddHint(ZoAutoPtr<ZoUpdateHint>& hint) {
    hints_.Add(hint);
}

void ZoEditTransaction::Commit() {
    committed_ = true;
    hints_.Deliver(false);
}

bool ZoEditTransaction::RevertActions() {
    for (size_t i = actions_.size(); i-- > 0;) {
        if (actions_[i]->Revert())
            continue;
        for (size_t j = i + 1; j < actions_.size(); ++j)
            actions_[j]->Perform();
        return false;
    }
    return true;
}

bool ZoEditTransaction::PerformActions() {
    for (size_t i = 0; i < actions_.size(); ++i) {
        if (actions_[i]->Perform())
            continue;
        for (size_t j = i; j-- > 0;)
            actions_[j]->Revert();
        return false;
    }
    return true;
}

bool ZoEditTransaction::UndoAll() {
    if (!RevertActions())
        return false;
    hints_.Deliver(true);
    return true;
}

bool ZoEditTransaction::RedoAll() {
    if (!PerformActions())
        return false;
    hints_.Deliver(false);
    return true;
}

}  // namespace ZoEditor
