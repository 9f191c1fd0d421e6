#include "media/resource_key.h"

bool operator==(const ZoResourceKey& a, const ZoResourceKey& b) noexcept {
    if (a.kind_ != b.kind_)
        return false;
    if (a.UsesName() && a.name_ != b.name_)
        return false;
    return !a.UsesId() || a.id_ == b.id_;
}
