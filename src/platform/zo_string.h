#pragma once
// Text is UTF-8 in a std::string everywhere inside Vimbo; conversions happen at
// the edges (Qt, file names) only.
#include <string>
#include <string_view>

using ZoString = std::string;

/// Formats like printf ("%s", "%d", "%u", "%x", "%%"), the form the fixed
/// message texts use.
ZoString ZoFormat(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// True when `text` begins with `prefix`.
bool ZoStartsWith(std::string_view text, std::string_view prefix) noexcept;

/// ASCII-only lower case; used for comparisons of names and extensions.
ZoString ZoToLowerAscii(std::string_view text);
