#pragma once
// A process-wide registry of the concrete types of one class family, keyed by
// GUID. It is filled once at program start and only read afterwards.
#include <cassert>
#include <vector>

#include "platform/zo_auto_ptr.h"
#include "platform/zo_guid.h"

/// `Info` needs a `guid` and a `factory` returning `ZoAutoPtr<T>`.
template <typename T, typename Info>
class ZoRegisteredGUIDObject {
  public:
    /// Appends a copy of `info`.
    static void Register(const Info& info) { Registry().push_back(info); }
    static int GetCount() noexcept { return static_cast<int>(Registry().size()); }
    /// The info at `index` (0 <= index < GetCount()).
    static const Info& GetInfo(int index) {
        assert(index >= 0 && index < GetCount());
        return Registry()[static_cast<size_t>(index)];
    }
    /// The first registered info with this GUID, or null.
    static const Info* FindInfo(const ZoGuid& guid) noexcept {
        for (const Info& info : Registry()) {
            if (info.guid == guid)
                return &info;
        }
        return nullptr;
    }
    /// A new default object of the type at `index` (0 <= index < GetCount()).
    static void Create(int index, ZoAutoPtr<T>& out) { out = GetInfo(index).factory(); }
    /// A new default object of the type with this GUID; null when none is registered.
    static void Create(const ZoGuid& guid, ZoAutoPtr<T>& out) {
        const Info* info = FindInfo(guid);
        out = info ? info->factory() : nullptr;
    }

  protected:
    ~ZoRegisteredGUIDObject() = default;

  private:
    static std::vector<Info>& Registry() {
        static std::vector<Info> registry;
        return registry;
    }
};
