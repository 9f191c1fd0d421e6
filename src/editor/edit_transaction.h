#pragma once
#include <string_view>
#include <vector>

#include "editor/edit_action.h"
#include "editor/update_hint.h"
#include "platform/zo_auto_ptr.h"
#include "platform/zo_string.h"

namespace ZoEditor {

/// A named group of actions performed together, with the hints they queued.
/// Undo and Redo show one transaction at a time.
class ZoEditTransaction {
  public:
    ZoEditTransaction() = default;
    explicit ZoEditTransaction(std::string_view name) : name_(name) {}
    ZoEditTransaction(const ZoEditTransaction&) = delete;
    ZoEditTransaction& operator=(const ZoEditTransaction&) = delete;
    /// A transaction dropped before it was committed rolls back its actions.
    ~ZoEditTransaction();

    void SetName(std::string_view name) { name_ = name; }
    const ZoString& GetName() const noexcept { return name_; }

    /// Takes the action and performs it. An action that fails to perform is
    /// dropped (it changed nothing) and false is returned.
    bool AddAction(ZoAutoPtr<ZoEditAction>& action);
    /// Takes the hint into the batch delivered on commit, undo and redo.
    void AddHint(ZoAutoPtr<ZoUpdateHint>& hint);

    /// Marks the transaction committed and delivers its hints.
    void Commit();
    /// Reverts every action, last first, then delivers the hints reversed.
    /// When an action fails to revert, the ones already reverted are performed
    /// again, nothing is delivered and the result is false.
    bool UndoAll();
    /// Performs every action again, first first, then delivers the hints.
    /// On failure the ones already performed are reverted and false returned.
    bool RedoAll();

    bool IsCommitted() const noexcept { return committed_; }
    int GetActionCount() const noexcept { return static_cast<int>(actions_.size()); }
    int GetHintCount() const noexcept { return hints_.GetCount(); }
    ZoUpdateHintList& GetHints() noexcept { return hints_; }

  private:
    bool RevertActions();
    bool PerformActions();

    ZoString name_;
    std::vector<ZoAutoPtr<ZoEditAction>> actions_;
    bool committed_ = false;
    ZoUpdateHintList hints_;
};

}  // namespace ZoEditor
