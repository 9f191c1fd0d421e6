#pragma once
#include <vector>

#include "editor/edit_transaction.h"
#include "editor/message_sink.h"
#include "platform/zo_auto_ptr.h"
#include "platform/zo_string.h"

namespace ZoEditor {

/// The ordered history of committed transactions, the current position in it
/// and the position at which the document was last saved. Nothing is merged
/// and there is no limit; a new transaction cuts off the redo part.
class ZoUndoList {
  public:
    ZoUndoList() = default;
    ZoUndoList(const ZoUndoList&) = delete;
    ZoUndoList& operator=(const ZoUndoList&) = delete;
    virtual ~ZoUndoList();

    /// Records `transaction` (owned by the caller until Add) as pending.
    virtual bool Begin(ZoEditTransaction* transaction);
    /// Takes the pending transaction, drops the redo part, appends and
    /// commits it. A transaction that was not begun is refused (false) and
    /// stays with the caller, whose holder rolls it back when it goes.
    virtual bool Add(ZoAutoPtr<ZoEditTransaction>& transaction);
    /// Forgets the pending transaction; false if `transaction` is not it.
    virtual bool Cancel(ZoEditTransaction* transaction);

    /// Undoes the transaction below the position, if any. A failure shows
    /// "Error during Undo" and keeps the position. Returns whether it moved.
    bool Undo();
    /// Redoes the transaction at the position, if any ("Error during Redo").
    bool Redo();
    /// Deletes the whole history without rolling anything back.
    void Clear();

    int GetPosition() const noexcept { return position_; }
    int GetCount() const noexcept { return static_cast<int>(transactions_.size()); }
    /// Name of the transaction at `index` (0 <= index < GetCount()).
    const ZoString& GetName(int index) const;
    bool CanUndo() const noexcept { return position_ > 0; }
    bool CanRedo() const noexcept { return position_ < GetCount(); }
    ZoEditTransaction* GetPending() const noexcept { return pending_; }

    /// True when the position differs from the last saved one.
    bool IsModified() const noexcept { return position_ != savedPosition_; }
    void MarkSaved() noexcept { savedPosition_ = position_; }

    /// Where undo and redo failures go; null sends them to standard error.
    void SetMessageSink(ZoMessageSink* sink) noexcept { messages_ = sink; }

  protected:
    /// Called after every add, undo and redo (also when nothing moved).
    virtual void OnUndoRedo() {}

  private:
    void Report(std::string_view text);

    ZoEditTransaction* pending_ = nullptr;
    std::vector<ZoAutoPtr<ZoEditTransaction>> transactions_;
    int position_ = 0;
    int savedPosition_ = 0;
    ZoMessageSink* messages_ = nullptr;
};

}  // namespace ZoEditor
