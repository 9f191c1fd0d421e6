#pragma once
// Identifies a shared resource. Image resources are keyed by file path (or a
// built-in name beginning with "<"); numbered keys exist for resources that
// live in the program itself.
#include <cstdint>

#include "platform/zo_string.h"

/// A resource key: by name, by number, or both.
class ZoResourceKey {
  public:
    enum Kind : int32_t { kEmpty = 0, kByName = 1, kById = 2, kByNameAndId = 3 };
    static constexpr int32_t kNoId = -1;

    ZoResourceKey() = default;
    /// A name key (kind 1).
    explicit ZoResourceKey(ZoString name) : kind_(kByName), name_(std::move(name)) {}
    ZoResourceKey(int32_t kind, ZoString name, int32_t id)
        : kind_(kind), name_(std::move(name)), id_(id) {}

    int32_t GetKind() const noexcept { return kind_; }
    const ZoString& GetName() const noexcept { return name_; }
    int32_t GetId() const noexcept { return id_; }
    void SetName(ZoString name) { name_ = std::move(name); }

    /// Whether the kind carries a name, a number.
    bool UsesName() const noexcept { return kind_ == kByName || kind_ == kByNameAndId; }
    bool UsesId() const noexcept { return kind_ == kById || kind_ == kByNameAndId; }

    /// Kinds must match; names compare byte for byte (case matters).
    friend bool operator==(const ZoResourceKey& a, const ZoResourceKey& b) noexcept;

  private:
    int32_t kind_ = kEmpty;
    ZoString name_;
    int32_t id_ = kNoId;
};
