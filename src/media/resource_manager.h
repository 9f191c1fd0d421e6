#pragma once
// The application's cache of shared resources. Both the editor thread and
// the preview builder's worker load pictures, so the manager and every
// resource have locks of their own; the order is always manager, then
// resource.
#include <cstdint>
#include <list>
#include <mutex>
#include <vector>

#include "editor/update_hint.h"
#include "media/image_resource.h"
#include "media/resource.h"

/// Tells windows that a resource's file changed on disk.
class ZoResourceChangedUpdateHint : public ZoEditor::ZoUpdateHint {
  public:
    explicit ZoResourceChangedUpdateHint(ZoAutoInterface2<ZoResource> resource)
        : resource_(std::move(resource)) {}
    ZoResource* GetResource() const noexcept { return resource_.Get(); }

  private:
    ZoAutoInterface2<ZoResource> resource_;
};

/// Owns the resources, trims them to a memory budget and checks them for
/// changes, one per idle call.
class ZoResourceManager {
  public:
    static constexpr int32_t kDefaultMemoryBudget = 0x100000;
    /// A full round of change checks starts at most this often.
    static constexpr uint32_t kCheckRoundMilliseconds = 1000;

    ZoResourceManager() = default;
    ZoResourceManager(const ZoResourceManager&) = delete;
    ZoResourceManager& operator=(const ZoResourceManager&) = delete;
    virtual ~ZoResourceManager() = default;

    /// The resource whose key equals `key`, or empty; unless `noTouch`,
    /// marks it used now.
    ZoAutoInterface2<ZoResource> FindResource(const ZoResourceKey& key, bool noTouch = false);
    /// Trims the cache, then keeps `resource`.
    void AddResource(ZoAutoInterface2<ZoResource> resource);
    void RemoveResource(ZoResource* resource);
    /// Evicts least recently used resources that nobody else holds until the
    /// total memory is within budget.
    virtual void TrimCache();

    void SetMemoryBudget(int32_t bytes);
    int32_t GetMemoryBudget() const;
    size_t GetResourceCount() const;

    /// Windows told about changed files; never owned.
    void AddTarget(ZoEditor::ZoEditUpdateTarget* target);
    void RemoveTarget(ZoEditor::ZoEditUpdateTarget* target);
    /// Checks one resource for a change on disk, notifying the targets of a
    /// change; called from idle processing.
    void CheckNextResource();

  protected:
    using ResourceList = std::list<ZoAutoInterface2<ZoResource>>;

    mutable std::mutex lock_;
    ZoAutoInterface2<ZoResource> FindLocked(const ZoResourceKey& key, bool noTouch);
    void AddLocked(ZoAutoInterface2<ZoResource> resource);

  private:
    void TrimLocked();
    void RemoveLocked(ResourceList::iterator position);

    ResourceList resources_;
    int32_t memoryBudget_ = kDefaultMemoryBudget;
    ResourceList::iterator checkPosition_ = resources_.end();
    uint32_t lastCheckRound_ = 0;
    std::vector<ZoEditor::ZoEditUpdateTarget*> targets_;
};

/// The resource manager of pictures.
class TeskResourceManager : public ZoResourceManager {
  public:
    /// The shared resource of the picture `key` names (resolved to its full
    /// path against the project folder), made on first use.
    ZoAutoInterface2<TeskImageResource> GetImageResource(const ZoResourceKey& key);
};

/// The application's one resource manager.
TeskResourceManager& TeskGetResourceManager();
