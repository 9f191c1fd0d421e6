#include "editor/undo_list.h"

#include <cassert>

namespace ZoEditor {

ZoUndoList::~ZoUndoList() = default;

bool ZoUndoList::Begin(ZoEditTransaction* transaction) {
    pending_ = transaction;
    return true;
}

bool ZoUndoList::Add(ZoAutoPtr<ZoEditTransaction>& transaction) {
    if (!transaction || transaction.get() != pending_)
        return false;
    pending_ = nullptr;
    while (GetCount() > position_)
        transactions_.pop_back();
    // Saved inside the part just dropped: that state can never come back.
    if (savedPosition_ > position_)
        savedPosition_ = -1;
    transactions_.push_back(std::move(transaction));
    ++position_;
    transactions_.back()->Commit();
    OnUndoRedo();
    return true;
}

bool ZoUndoList::Cancel(ZoEditTransaction* transaction) {
    if (!transaction || transaction != pending_)
        return false;
    pending_ = nullptr;
    return true;
}

bool ZoUndoList::Undo() {
    bool moved = false;
    if (position_ > 0) {
        moved = transactions_[static_cast<size_t>(position_ - 1)]->UndoAll();
        if (moved)
            --position_;
        else
            Report("Error during Undo");
    }
    OnUndoRedo();
    return moved;
}

bool ZoUndoList::Redo() {
    bool moved = false;
    if (position_ < GetCount()) {
        moved = transactions_[static_cast<size_t>(position_)]->RedoAll();
        if (moved)
            ++position_;
        else
            Report("Error during Redo");
    }
    OnUndoRedo();
    return moved;
}

void ZoUndoList::Clear() {
    while (!transactions_.empty())
        transactions_.pop_back();
    pending_ = nullptr;
    position_ = 0;
    savedPosition_ = 0;
}

const ZoString& ZoUndoList::GetName(int index) const {
    assert(index >= 0 && index < GetCount());
    return transactions_[static_cast<size_t>(index)]->GetName();
}

void ZoUndoList::Report(std::string_view text) {
    if (messages_) {
        messages_->ShowMessage(text);
        return;
    }
    ZoStderrMessageSink().ShowMessage(text);
}

}  // namespace ZoEditor
