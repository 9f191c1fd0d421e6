#pragma once
// Colour transformations as the player applies them: per channel, multiply
// then add, clamped to 0..255 once at the end of a chain (nested transforms
// combine without clamping in between).
#include <array>

#include "render/swf_parser.h"

namespace ZoRender {

struct ColourTransform {
    /// Factors (1 leaves a channel) and offsets in colour units, for red,
    /// green, blue and alpha.
    std::array<float, 4> mult{1, 1, 1, 1};
    std::array<float, 4> add{0, 0, 0, 0};

    /// The CXFORMWITHALPHA record's terms (multipliers are factor * 256).
    static ColourTransform FromRecord(const Cxform& record) noexcept;
    /// Turns every drawn pixel opaque white: masks clip by their shape, never
    /// by their colours.
    static ColourTransform Opaque() noexcept;

    /// `inner` first, then this one.
    ColourTransform After(const ColourTransform& inner) const noexcept;
    bool IsIdentity() const noexcept;
    /// Whether only alpha is scaled, so that a picture can be drawn as it is
    /// with a constant opacity.
    bool OnlyScalesAlpha() const noexcept;
    /// A straight colour through the transform.
    Rgba Apply(Rgba colour) const noexcept;
};

}  // namespace ZoRender
