#pragma once
// Reads RTF as Vimbo and other editors write it. The reader is tolerant:
// unknown control words and destinations are skipped, references to missing
// fonts or colours change nothing, and truncated or malformed input keeps
// whatever was read before the damage. It never reads past its input and its
// memory grows only with the input.
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "text/text_layout.h"

/// Groups nested deeper than this are skipped whole.
inline constexpr size_t kZoRtfMaxGroupDepth = 256;

/// The runs that `rtf` holds, in UTF-8, each with a format that inherits from
/// `style`; nullopt when `rtf` does not begin with "{\rtf". Indents, tab stops
/// and exact line heights are converted to pixels at `logPixels`. The runs are
/// not normalised.
std::optional<std::vector<ZoTextRun>> ZoReadRtf(std::string_view rtf,
                                                const std::shared_ptr<const ZoTextFormat>& style,
                                                int32_t logPixels, bool suppressIds);
