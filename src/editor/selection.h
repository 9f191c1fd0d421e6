#pragma once
// The selection of items (effects) in an editor. Every change produces one
// hint per affected item for the selection's listeners. While a transaction
// is open the hints go into the transaction's hint list, so listeners hear of
// the selection and of the change it accompanies in one batch.
#include <algorithm>
#include <cassert>
#include <vector>

#include "editor/update_hint.h"

namespace ZoEditor {

/// An item became selected (deselected false) or stopped being selected.
template <typename T>
class ZoSelectionUpdateHint : public ZoUpdateHint {
  public:
    ZoSelectionUpdateHint(T* item, bool deselected) noexcept
        : item_(item), deselected_(deselected) {}
    T* GetItem() const noexcept { return item_; }
    bool IsDeselected() const noexcept { return deselected_; }

  private:
    T* item_;
    bool deselected_;
};

/// An ordered set of selected items (not owned).
template <typename T>
class ZoSelection {
  public:
    /// Selects `item` (not null). Unless `addToSelection`, everything
    /// selected before is deselected first, front first.
    void Select(T* item, bool addToSelection) {
        assert(item);
        Change([&](ZoUpdateHintList& hints) {
            if (!addToSelection)
                RemoveAll(hints);
            else if (IsSelected(item))
                return;
            items_.push_back(item);
            Emit(hints, item, false);
        });
    }

    /// Deselects everything.
    void Clear() {
        Change([&](ZoUpdateHintList& hints) { RemoveAll(hints); });
    }

    int GetCount() const noexcept { return static_cast<int>(items_.size()); }
    /// The selected item at `index` (0 <= index < GetCount()).
    T* GetItem(int index) const {
        assert(index >= 0 && index < GetCount());
        return items_[static_cast<size_t>(index)];
    }
    bool IsSelected(const T* item) const {
        return std::find(items_.begin(), items_.end(), item) != items_.end();
    }

    void AddListener(ZoEditUpdateTarget* listener) {
        if (listener &&
            std::find(listeners_.begin(), listeners_.end(), listener) == listeners_.end())
            listeners_.push_back(listener);
    }
    void RemoveListener(ZoEditUpdateTarget* listener) {
        listeners_.erase(std::remove(listeners_.begin(), listeners_.end(), listener),
                         listeners_.end());
    }

    /// Collects hints into `hints` instead of delivering them (null: deliver
    /// each change's hints at once).
    void SetHintList(ZoUpdateHintList* hints) noexcept { external_ = hints; }
    ZoUpdateHintList* GetHintList() const noexcept { return external_; }

  private:
    template <typename Edit>
    void Change(Edit&& edit) {
        if (external_) {
            edit(*external_);
            return;
        }
        ZoUpdateHintList local;
        edit(local);
        local.Deliver(false);
    }

    void RemoveAll(ZoUpdateHintList& hints) {
        std::vector<T*> removed;
        removed.swap(items_);
        for (T* item : removed)
            Emit(hints, item, true);
    }

    void Emit(ZoUpdateHintList& hints, T* item, bool deselected) {
        ZoAutoPtr<ZoUpdateHint> hint = std::make_unique<ZoSelectionUpdateHint<T>>(item, deselected);
        for (ZoEditUpdateTarget* listener : listeners_)
            hint->AddTarget(listener);
        hints.Add(hint);
    }

    std::vector<T*> items_;
    std::vector<ZoEditUpdateTarget*> listeners_;
    ZoUpdateHintList* external_ = nullptr;
};

}  // namespace ZoEditor
