#include "media/resource_key.h"

#include <cstring>

bool ZoResourceKey::IsEmpty() const noexcept {
    if (kind_ <= kEmpty || kind_ > kByNameAndId)
        return true;
    return (UsesName() && name_.empty()) || (UsesId() && id_ == kNoId);
}

uint32_t ZoResourceKey::Hash() const noexcept {
    uint32_t hash = 0;
    auto mix = [&hash](unsigned char byte) { hash = hash * 2 + byte; };
    if (UsesName())
        for (char c : name_)
            mix(static_cast<unsigned char>(c));
    if (UsesId()) {
        unsigned char bytes[sizeof id_];
        std::memcpy(bytes, &id_, sizeof id_);
        for (unsigned char b : bytes)
            mix(b);
    }
    return hash;
}

bool operator==(const ZoResourceKey& a, const ZoResourceKey& b) noexcept {
    if (a.kind_ != b.kind_)
        return false;
    if (a.UsesName() && a.name_ != b.name_)
        return false;
    return !a.UsesId() || a.id_ == b.id_;
}
