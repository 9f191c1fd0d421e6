#include "platform/zo_guid.h"

#include <random>

namespace {

int HexValue(char c) noexcept {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// Reads `digits` hex digits at `pos`; -1 when any is not a hex digit.
int64_t ReadHex(std::string_view text, size_t pos, size_t digits) noexcept {
    int64_t value = 0;
    for (size_t i = 0; i < digits; ++i) {
        const int digit = HexValue(text[pos + i]);
        if (digit < 0)
            return -1;
        value = value * 16 + digit;
    }
    return value;
}

}  // namespace

ZoGuid ZoGuid::NewRandom() {
    static thread_local std::mt19937_64 engine{std::random_device{}()};
    std::array<uint8_t, 16> bytes{};
    for (size_t i = 0; i < bytes.size(); i += 8) {
        const uint64_t word = engine();
        for (size_t j = 0; j < 8; ++j)
            bytes[i + j] = static_cast<uint8_t>(word >> (8 * j));
    }
    ZoGuid guid = FromBytes(bytes);
    guid.data3 = static_cast<uint16_t>((guid.data3 & 0x0FFF) | 0x4000);   // version 4
    guid.data4[0] = static_cast<uint8_t>((guid.data4[0] & 0x3F) | 0x80);  // RFC 4122 variant
    return guid;
}

std::optional<ZoGuid> ZoGuid::Parse(std::string_view text) {
    // {XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}
    if (text.size() != 38 || text.front() != '{' || text.back() != '}')
        return std::nullopt;
    if (text[9] != '-' || text[14] != '-' || text[19] != '-' || text[24] != '-') {
        return std::nullopt;
    }
    ZoGuid guid;
    const int64_t d1 = ReadHex(text, 1, 8);
    const int64_t d2 = ReadHex(text, 10, 4);
    const int64_t d3 = ReadHex(text, 15, 4);
    if (d1 < 0 || d2 < 0 || d3 < 0)
        return std::nullopt;
    guid.data1 = static_cast<uint32_t>(d1);
    guid.data2 = static_cast<uint16_t>(d2);
    guid.data3 = static_cast<uint16_t>(d3);
    static constexpr size_t kData4Positions[8] = {20, 22, 25, 27, 29, 31, 33, 35};
    for (size_t i = 0; i < 8; ++i) {
        const int64_t byte = ReadHex(text, kData4Positions[i], 2);
        if (byte < 0)
            return std::nullopt;
        guid.data4[i] = static_cast<uint8_t>(byte);
    }
    return guid;
}

ZoGuid ZoGuid::FromBytes(const std::array<uint8_t, 16>& b) noexcept {
    ZoGuid guid;
    guid.data1 = static_cast<uint32_t>(b[0]) | static_cast<uint32_t>(b[1]) << 8 |
                 static_cast<uint32_t>(b[2]) << 16 | static_cast<uint32_t>(b[3]) << 24;
    guid.data2 = static_cast<uint16_t>(b[4] | b[5] << 8);
    guid.data3 = static_cast<uint16_t>(b[6] | b[7] << 8);
    for (size_t i = 0; i < 8; ++i)
        guid.data4[i] = b[8 + i];
    return guid;
}

std::array<uint8_t, 16> ZoGuid::ToBytes() const noexcept {
    std::array<uint8_t, 16> b{};
    for (size_t i = 0; i < 4; ++i)
        b[i] = static_cast<uint8_t>(data1 >> (8 * i));
    b[4] = static_cast<uint8_t>(data2);
    b[5] = static_cast<uint8_t>(data2 >> 8);
    b[6] = static_cast<uint8_t>(data3);
    b[7] = static_cast<uint8_t>(data3 >> 8);
    for (size_t i = 0; i < 8; ++i)
        b[8 + i] = data4[i];
    return b;
}

ZoString ZoGuid::ToString() const {
    return ZoFormat("{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", data1, data2, data3,
                    data4[0], data4[1], data4[2], data4[3], data4[4], data4[5], data4[6], data4[7]);
}
