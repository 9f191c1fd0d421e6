#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/zo_string.h"

/// A GUID in the Windows layout. Files store it in its in-memory form: Data1
/// as a little-endian uint32, Data2 and Data3 as little-endian uint16, then
/// the eight bytes of Data4.
struct ZoGuid {
    uint32_t data1 = 0;
    uint16_t data2 = 0;
    uint16_t data3 = 0;
    std::array<uint8_t, 8> data4{};

    /// A random version-4 GUID.
    static ZoGuid NewRandom();
    /// Parses "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" (either case, braces
    /// required); nothing on any other text.
    static std::optional<ZoGuid> Parse(std::string_view text);
    /// The 16-byte file form.
    static ZoGuid FromBytes(const std::array<uint8_t, 16>& bytes) noexcept;

    /// Upper-case registry form with braces.
    ZoString ToString() const;
    std::array<uint8_t, 16> ToBytes() const noexcept;

    friend bool operator==(const ZoGuid&, const ZoGuid&) = default;
    friend auto operator<=>(const ZoGuid&, const ZoGuid&) = default;
};
