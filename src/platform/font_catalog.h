#pragma once
// Finds font faces by family, weight and slant through fontconfig. The usual
// Windows families resolve through fontconfig's metric aliases (Arial to
// Liberation Sans, Times New Roman to Liberation Serif, Courier New to
// Liberation Mono), so text measures as it would on Windows.
#include <memory>
#include <string_view>

#include "platform/font_face.h"

/// The family used when fontconfig knows neither the requested family nor a
/// metric-compatible alias of it: the default family of rich text.
inline constexpr std::string_view kZoFallbackFontFamily = "Times New Roman";

/// The face for `family` in the given weight and slant. Faces are cached for
/// the life of the process, so equal requests give the same face; the choice
/// is fontconfig's best match and therefore deterministic on one system.
/// Throws ZoException only when the system has no usable font at all.
std::shared_ptr<ZoFontFace> ZoFindFontFace(std::string_view family, bool bold, bool italic);

/// True when fontconfig can serve `family` itself or through a
/// metric-compatible alias (no fallback needed).
bool ZoHasFontFamily(std::string_view family);
