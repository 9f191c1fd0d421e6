#pragma once
// Change notification. Hints are queued while a transaction runs and handed
// to their targets in one batch when it is committed; the same batch goes out
// again, marked reversed, on undo and redo. A hint may outlive a window it
// names (undo history is long-lived), so each target carries a lifetime token
// and delivery skips targets that no longer exist.
#include <cstddef>
#include <memory>
#include <vector>

#include "platform/zo_auto_ptr.h"

namespace ZoEditor {

class ZoUpdateHintList;

/// Anything that can receive update hints.
class ZoEditUpdateTarget {
  public:
    ZoEditUpdateTarget() : lifetime_(std::make_shared<char>()) {}
    // A copy is a different target: it gets a lifetime of its own.
    ZoEditUpdateTarget(const ZoEditUpdateTarget&) : ZoEditUpdateTarget() {}
    ZoEditUpdateTarget& operator=(const ZoEditUpdateTarget&) noexcept { return *this; }
    virtual ~ZoEditUpdateTarget() = default;

    /// Called once per delivery with the whole batch of hints.
    virtual void OnUpdate(ZoUpdateHintList& hints) = 0;

    /// Expires when this target is destroyed.
    std::weak_ptr<const void> GetLifetime() const noexcept { return lifetime_; }

  private:
    std::shared_ptr<char> lifetime_;
};

/// One queued change; subclasses carry the payload.
class ZoUpdateHint {
  public:
    ZoUpdateHint() = default;
    ZoUpdateHint(const ZoUpdateHint&) = delete;
    ZoUpdateHint& operator=(const ZoUpdateHint&) = delete;
    virtual ~ZoUpdateHint() = default;

    /// Adds a target to notify; null is ignored.
    void AddTarget(ZoEditUpdateTarget* target);
    size_t GetTargetCount() const noexcept { return targets_.size(); }
    /// The target at `index`, or null when it has been destroyed since.
    ZoEditUpdateTarget* GetTarget(size_t index) const;

  private:
    struct Target {
        ZoEditUpdateTarget* target;
        std::weak_ptr<const void> lifetime;
    };
    std::vector<Target> targets_;
};

/// An ordered batch of owned hints that can be delivered repeatedly.
class ZoUpdateHintList {
  public:
    ZoUpdateHintList() = default;
    ZoUpdateHintList(const ZoUpdateHintList&) = delete;
    ZoUpdateHintList& operator=(const ZoUpdateHintList&) = delete;

    /// Takes ownership of `hint`; a null holder is ignored.
    void Add(ZoAutoPtr<ZoUpdateHint>& hint);
    int GetCount() const noexcept { return static_cast<int>(hints_.size()); }
    /// The hint at `index` (0 <= index < GetCount()); `reversed` receives
    /// whether the batch is being delivered as an undo.
    ZoUpdateHint* GetHint(int index, bool& reversed) const;
    /// True only while the list is delivered as an undo.
    bool IsReversed() const noexcept { return reversed_; }

    /// Calls every live target of every hint once, in order of first
    /// appearance; each call sees the whole list. The hints stay in the list.
    void Deliver(bool reversed);

  private:
    std::vector<ZoAutoPtr<ZoUpdateHint>> hints_;
    bool reversed_ = false;
};

}  // namespace ZoEditor
