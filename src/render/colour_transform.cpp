#include "render/colour_transform.h"

#include <algorithm>
#include <cmath>

namespace ZoRender {
namespace {

uint8_t Channel(float value) noexcept {
    return static_cast<uint8_t>(std::clamp(std::lround(value), 0L, 255L));
}

}  // namespace

ColourTransform ColourTransform::FromRecord(const Cxform& record) noexcept {
    ColourTransform t;
    for (int i = 0; i < 4; ++i) {
        t.mult[i] = static_cast<float>(record.mult[i]) / 256.0f;
        t.add[i] = static_cast<float>(record.add[i]);
    }
    return t;
}

ColourTransform ColourTransform::Opaque() noexcept {
    return {{0, 0, 0, 0}, {255, 255, 255, 255}};
}

ColourTransform ColourTransform::After(const ColourTransform& inner) const noexcept {
    ColourTransform t;
    for (int i = 0; i < 4; ++i) {
        t.mult[i] = inner.mult[i] * mult[i];
        t.add[i] = inner.add[i] * mult[i] + add[i];
    }
    return t;
}

bool ColourTransform::IsIdentity() const noexcept {
    return mult == std::array<float, 4>{1, 1, 1, 1} && add == std::array<float, 4>{0, 0, 0, 0};
}

bool ColourTransform::OnlyScalesAlpha() const noexcept {
    return mult[0] == 1 && mult[1] == 1 && mult[2] == 1 && add == std::array<float, 4>{0, 0, 0, 0};
}

Rgba ColourTransform::Apply(Rgba colour) const noexcept {
    return {Channel(colour.r * mult[0] + add[0]), Channel(colour.g * mult[1] + add[1]),
            Channel(colour.b * mult[2] + add[2]), Channel(colour.a * mult[3] + add[3])};
}

}  // namespace ZoRender
