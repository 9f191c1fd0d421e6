#include "media/resource_manager.h"

#include <algorithm>
#include <chrono>

#include "media/image_path.h"

uint32_t ZoTickCount() noexcept {
    using namespace std::chrono;
    return static_cast<uint32_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

ZoAutoInterface2<ZoResource> ZoResourceManager::FindResource(const ZoResourceKey& key,
                                                             bool noTouch) {
    std::lock_guard lock(lock_);
    return FindLocked(key, noTouch);
}

ZoAutoInterface2<ZoResource> ZoResourceManager::FindLocked(const ZoResourceKey& key, bool noTouch) {
    for (const auto& resource : resources_)
        if (resource->GetKey() == key) {
            if (!noTouch)
                resource->Touch();
            return resource;
        }
    return nullptr;
}

void ZoResourceManager::AddResource(ZoAutoInterface2<ZoResource> resource) {
    std::lock_guard lock(lock_);
    AddLocked(std::move(resource));
}

void ZoResourceManager::AddLocked(ZoAutoInterface2<ZoResource> resource) {
    TrimLocked();
    resources_.push_back(std::move(resource));
}

void ZoResourceManager::RemoveResource(ZoResource* resource) {
    std::lock_guard lock(lock_);
    const auto position =
        std::find_if(resources_.begin(), resources_.end(),
                     [resource](const auto& held) { return held.Get() == resource; });
    if (position != resources_.end())
        RemoveLocked(position);
}

void ZoResourceManager::RemoveLocked(ResourceList::iterator position) {
    if (checkPosition_ == position)
        ++checkPosition_;
    resources_.erase(position);
}

void ZoResourceManager::TrimCache() {
    std::lock_guard lock(lock_);
    TrimLocked();
}

void ZoResourceManager::TrimLocked() {
    int64_t total = 0;
    std::vector<std::pair<ResourceList::iterator, int32_t>> unused;
    for (auto position = resources_.begin(); position != resources_.end(); ++position) {
        const int32_t size = (*position)->GetMemorySize();
        total += size;
        if ((*position)->GetReferenceCount() == 1)
            unused.emplace_back(position, size);
    }
    // Tick counts wrap, so "older" is measured back from now.
    const uint32_t now = ZoTickCount();
    std::stable_sort(unused.begin(), unused.end(), [now](const auto& a, const auto& b) {
        return now - a.first->Get()->GetLastUsed() > now - b.first->Get()->GetLastUsed();
    });
    for (const auto& [position, size] : unused) {
        if (total <= memoryBudget_)
            break;
        total -= size;
        RemoveLocked(position);
    }
}

void ZoResourceManager::SetMemoryBudget(int32_t bytes) {
    std::lock_guard lock(lock_);
    memoryBudget_ = bytes;
}

int32_t ZoResourceManager::GetMemoryBudget() const {
    std::lock_guard lock(lock_);
    return memoryBudget_;
}

size_t ZoResourceManager::GetResourceCount() const {
    std::lock_guard lock(lock_);
    return resources_.size();
}

void ZoResourceManager::AddTarget(ZoEditor::ZoEditUpdateTarget* target) {
    std::lock_guard lock(lock_);
    if (std::find(targets_.begin(), targets_.end(), target) == targets_.end())
        targets_.push_back(target);
}

void ZoResourceManager::RemoveTarget(ZoEditor::ZoEditUpdateTarget* target) {
    std::lock_guard lock(lock_);
    std::erase(targets_, target);
}

void ZoResourceManager::CheckNextResource() {
    ZoEditor::ZoUpdateHintList batch;
    {
        std::lock_guard lock(lock_);
        if (checkPosition_ == resources_.end()) {
            const uint32_t now = ZoTickCount();
            if (now - lastCheckRound_ < kCheckRoundMilliseconds)
                return;
            checkPosition_ = resources_.begin();
            lastCheckRound_ = now;
        }
        if (resources_.empty())
            return;
        const ZoAutoInterface2<ZoResource> resource = *checkPosition_;
        ++checkPosition_;
        if (!resource->CheckForChange())
            return;
        ZoAutoPtr<ZoEditor::ZoUpdateHint> hint =
            std::make_unique<ZoResourceChangedUpdateHint>(resource);
        for (auto* target : targets_)
            hint->AddTarget(target);
        batch.Add(hint);
    }
    // Outside the lock: a window that hears of the change may well ask the
    // manager for the picture again.
    batch.Deliver(false);
}

ZoAutoInterface2<TeskImageResource> TeskResourceManager::GetImageResource(
    const ZoResourceKey& key) {
    ZoResourceKey fullKey = key;
    fullKey.SetName(TeskFullImagePath(key.GetName(), TeskGetProjectFolder()));
    std::lock_guard lock(lock_);
    if (auto found = FindLocked(fullKey, false))
        return ZoAutoInterface2<TeskImageResource>(static_cast<TeskImageResource*>(found.Get()));
    ZoAutoInterface2<TeskImageResource> resource(new TeskImageResource(fullKey));
    AddLocked(resource);
    return resource;
}

TeskResourceManager& TeskGetResourceManager() {
    static TeskResourceManager manager;
    return manager;
}
