#pragma once
#include <algorithm>
#include <cstdint>

/// A point in whatever integer unit the caller works in (usually twips).
struct ZoPoint {
    int32_t x = 0;
    int32_t y = 0;
    friend bool operator==(const ZoPoint&, const ZoPoint&) = default;
};

/// A width and height pair.
struct ZoSize {
    int32_t cx = 0;
    int32_t cy = 0;
    friend bool operator==(const ZoSize&, const ZoSize&) = default;
};

/// Rectangle as (left, top, right, bottom), y growing downwards. Right and
/// bottom are exclusive edges, so Width() is right - left.
struct ZoRect {
    int32_t left = 0;
    int32_t top = 0;
    int32_t right = 0;
    int32_t bottom = 0;

    constexpr int32_t Width() const noexcept { return right - left; }
    constexpr int32_t Height() const noexcept { return bottom - top; }
    constexpr ZoPoint TopLeft() const noexcept { return {left, top}; }
    constexpr ZoPoint BottomRight() const noexcept { return {right, bottom}; }
    /// Empty when it encloses no area (zero or negative width or height).
    constexpr bool IsEmpty() const noexcept { return right <= left || bottom <= top; }
    constexpr bool Contains(ZoPoint p) const noexcept {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }
    constexpr void Offset(int32_t dx, int32_t dy) noexcept {
        left += dx;
        right += dx;
        top += dy;
        bottom += dy;
    }
    /// Swaps edges so that left <= right and top <= bottom.
    constexpr void Normalize() noexcept {
        if (left > right)
            std::swap(left, right);
        if (top > bottom)
            std::swap(top, bottom);
    }
    /// The overlap of two rectangles; an empty rectangle at (0, 0) when none.
    static constexpr ZoRect Intersection(const ZoRect& a, const ZoRect& b) noexcept {
        ZoRect r{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                 std::min(a.bottom, b.bottom)};
        return r.IsEmpty() ? ZoRect{} : r;
    }
    /// The smallest rectangle holding both; an empty operand is ignored.
    static constexpr ZoRect Union(const ZoRect& a, const ZoRect& b) noexcept {
        if (a.IsEmpty())
            return b;
        if (b.IsEmpty())
            return a;
        return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                std::max(a.bottom, b.bottom)};
    }
    friend bool operator==(const ZoRect&, const ZoRect&) = default;
};
