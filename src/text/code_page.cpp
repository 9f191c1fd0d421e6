#include "text/code_page.h"

#include <array>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// 0x80..0x9F; the rest of the code page equals Latin-1.
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool IsContinuation(uint8_t byte) noexcept {
    return (byte & 0xC0) == 0x80;
}

}  // namespace

char32_t ZoCp1252ToUnicode(uint8_t byte) noexcept {
    if (byte >= 0x80 && byte < 0xA0) {
        return kHighControls[byte - 0x80];
    }
    return byte;
}

std::optional<uint8_t> ZoUnicodeToCp1252(char32_t character) noexcept {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
        return static_cast<uint8_t>(character);
    }
    for (size_t i = 0; i < kHighControls.size(); ++i) {
        if (kHighControls[i] == character) {
            return static_cast<uint8_t>(0x80 + i);
        }
    }
    return std::nullopt;
}

void ZoAppendUtf8(ZoString& out, char32_t character) {
    if ((character >= 0xD800 && character <= 0xDFFF) || character > 0x10FFFF) {
        character = kReplacement;
    }
    if (character < 0x80) {
        out += static_cast<char>(character);
    } else if (character < 0x800) {
        out += static_cast<char>(0xC0 | (character >> 6));
        out += static_cast<char>(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        out += static_cast<char>(0xE0 | (character >> 12));
        out += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (character & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (character >> 18));
        out += static_cast<char>(0x80 | ((character >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (character & 0x3F));
    }
}

char32_t ZoNextUtf8(std::string_view text, size_t& offset) noexcept {
    const auto lead = static_cast<uint8_t>(text[offset]);
    size_t length = 0;
    char32_t value = 0;
    char32_t minimum = 0;
    if (lead < 0x80) {
        ++offset;
        return lead;
    } else if ((lead & 0xE0) == 0xC0) {
        length = 2, value = lead & 0x1F, minimum = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3, value = lead & 0x0F, minimum = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4, value = lead & 0x07, minimum = 0x10000;
    } else {
        ++offset;
        return kReplacement;
    }
    if (offset + length > text.size()) {
        ++offset;
        return kReplacement;
    }
    for (size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<uint8_t>(text[offset + i]);
        if (!IsContinuation(byte)) {
            ++offset;
            return kReplacement;
        }
        value = value << 6 | (byte & 0x3F);
    }
    // Overlong forms and surrogates are malformed: one byte, one U+FFFD.
    if (value < minimum || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) {
        ++offset;
        return kReplacement;
    }
    offset += length;
    return value;
}
