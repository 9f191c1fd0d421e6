#include "editor/update_hint.h"

#include <algorithm>
#include <cassert>

namespace ZoEditor {

void ZoUpdateHint::AddTarget(ZoEditUpdateTarget* target) {
    if (target)
        targets_.push_back({target, target->GetLifetime()});
}

ZoEditUpdateTarget* ZoUpdateHint::GetTarget(size_t index) const {
    assert(index < targets_.size());
    const Target& entry = targets_[index];
    return entry.lifetime.expired() ? nullptr : entry.target;
}

void ZoUpdateHintList::Add(ZoAutoPtr<ZoUpdateHint>& hint) {
    if (hint)
        hints_.push_back(std::move(hint));
}

ZoUpdateHint* ZoUpdateHintList::GetHint(int index, bool& reversed) const {
    assert(index >= 0 && index < GetCount());
    reversed = reversed_;
    return hints_[static_cast<size_t>(index)].get();
}

void ZoUpdateHintList::Deliver(bool reversed) {
    struct FlagReset {
        bool& flag;
        ~FlagReset() { flag = false; }
    } reset{reversed_};
    reversed_ = reversed;
    std::vector<const ZoEditUpdateTarget*> called;
    for (const ZoAutoPtr<ZoUpdateHint>& hint : hints_) {
        for (size_t t = 0; t < hint->GetTargetCount(); ++t) {
            // Looked up afresh each time: an earlier target may have destroyed it.
            ZoEditUpdateTarget* target = hint->GetTarget(t);
            if (!target || std::find(called.begin(), called.end(), target) != called.end())
                continue;
            called.push_back(target);
            target->OnUpdate(*this);
        }
    }
}

}  // namespace ZoEditor
