#pragma once
// Shared resources cached by a resource manager.
#include <cstdint>

#include "media/resource_key.h"
#include "platform/zo_reference.h"

/// Milliseconds of a steady clock, wrapping at 2^32 like a tick count.
uint32_t ZoTickCount() noexcept;

/// A cached resource, counted: the manager holds one reference, every user
/// another.
class ZoResource : public ZoReferenceClass {
  public:
    explicit ZoResource(ZoResourceKey key) : key_(std::move(key)), lastUsed_(ZoTickCount()) {}

    const ZoResourceKey& GetKey() const noexcept { return key_; }
    uint32_t GetLastUsed() const noexcept { return lastUsed_; }
    void Touch() noexcept { lastUsed_ = ZoTickCount(); }

    /// Bytes the resource keeps in memory.
    virtual int32_t GetMemorySize() { return 0; }
    /// True when the resource's source changed since it was loaded; the
    /// resource has then dropped what it had loaded.
    virtual bool CheckForChange() { return false; }

  private:
    ZoResourceKey key_;
    uint32_t lastUsed_;
};
