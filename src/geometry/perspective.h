#pragma once
// The simple perspective of the 3D effects: an eye in front of the middle of
// the object rectangle at twice its larger side, looking at the screen
// plane z = 0 (see geometry/point_3d.h for the axes).
#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "geometry/point_3d.h"
#include "platform/zo_rect.h"

/// The eye's distance from the screen: 2·max(width, height) in twips.
constexpr double TeskEyeDistance(const ZoRect& rect) noexcept {
    return 2.0 * (rect.Width() > rect.Height() ? rect.Width() : rect.Height());
}

/// The screen point of `p` (relative to the rectangle's centre, whose
/// coordinates are truncated): the centre plus p.xy·E/(E − p.z), truncated.
/// Points nearer than a 64th of E to the eye, or behind it, are drawn as if
/// at that distance; an empty rectangle projects everything onto its centre.
ZoPoint TeskProject(const TeskPoint3D& p, const ZoRect& rect) noexcept;

/// Whether a triangle, clockwise at rest, shows its front: its projected
/// corners still run clockwise on screen.
bool TeskFacesViewer(const std::array<ZoPoint, 3>& projected) noexcept;

/// Indices of `depths` ordered from the farthest (smallest z) to the
/// nearest, which is the order to draw them in; equal depths keep their order.
std::vector<int32_t> TeskBackToFront(std::span<const double> depths);
