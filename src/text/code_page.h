#pragma once
// Text is UTF-8 inside Vimbo; RTF carries Windows-1252 bytes. These helpers
// convert at that edge and step through UTF-8 for measuring.
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/zo_string.h"

/// The character a Windows-1252 byte stands for. The five bytes the code page
/// leaves undefined map to the C1 control of the same value, as Windows does.
char32_t ZoCp1252ToUnicode(uint8_t byte) noexcept;

/// The Windows-1252 byte for `character`, if the code page has one.
std::optional<uint8_t> ZoUnicodeToCp1252(char32_t character) noexcept;

/// Appends `character` as UTF-8; surrogates and values beyond U+10FFFF become
/// U+FFFD.
void ZoAppendUtf8(ZoString& out, char32_t character);

/// Decodes the character starting at `offset` and moves `offset` past it. A
/// malformed sequence yields U+FFFD and consumes one byte, so every input
/// makes progress.
char32_t ZoNextUtf8(std::string_view text, size_t& offset) noexcept;
