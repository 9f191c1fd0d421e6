#include "platform/zo_string.h"

#include <cstdarg>
#include <cstdio>

ZoString ZoFormat(const char* format, ...) {
    va_list args;
    va_start(args, format);
    va_list measure;
    va_copy(measure, args);
    const int length = std::vsnprintf(nullptr, 0, format, measure);
    va_end(measure);
    ZoString text;
    if (length > 0) {
        text.resize(static_cast<size_t>(length));
        std::vsnprintf(text.data(), text.size() + 1, format, args);
    }
    va_end(args);
    return text;
}

bool ZoStartsWith(std::string_view text, std::string_view prefix) noexcept {
    return text.substr(0, prefix.size()) == prefix;
}

ZoString ZoToLowerAscii(std::string_view text) {
    ZoString lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
}
