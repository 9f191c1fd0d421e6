#pragma once
// One application of a page or panel: every control that differs from the
// stored setting is set within one transaction, which takes the name of the
// setting when only one changed and the page's name when several did.
#include <string_view>

#include "document/file.h"

class TeskEditBatch {
  public:
    /// Begins a transaction named `multiChangeName` on `document`'s history.
    TeskEditBatch(TeskFile& document, std::string_view multiChangeName);
    TeskEditBatch(const TeskEditBatch&) = delete;
    TeskEditBatch& operator=(const TeskEditBatch&) = delete;
    /// A batch that was not committed records nothing.
    ~TeskEditBatch();

    ZoEditor::ZoEditTransaction* GetTransaction() const noexcept { return transaction_.get(); }

    /// Counts a changed setting named `name`.
    void Note(std::string_view name);
    /// When `shown` differs from `stored`, counts `name` and calls `setter`
    /// of `target` with `shown` and the transaction.
    template <typename Target, typename Value, typename Shown>
    void Set(Target& target, void (Target::*setter)(Value, ZoEditor::ZoEditTransaction*),
             const Shown& shown, const Shown& stored, std::string_view name) {
        if (shown == stored)
            return;
        Note(name);
        (target.*setter)(shown, transaction_.get());
    }

    int GetChangeCount() const noexcept { return changes_; }
    /// Adds the transaction to the history when anything changed, cancels
    /// it otherwise. Returns whether anything was recorded.
    bool Commit();

  private:
    TeskFile& document_;
    ZoString multiChangeName_;
    std::unique_ptr<ZoEditor::ZoEditTransaction> transaction_;
    int changes_ = 0;
};
