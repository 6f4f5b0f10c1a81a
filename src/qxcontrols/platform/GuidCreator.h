// Globally unique identifiers.
#pragma once

#include "qxcontrols/common/Types.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qx {

// The fields of a 128-bit identifier; their layout in memory is up to the block that stores them.
struct Guid {
    std::uint32_t first = 0;
    std::uint16_t second = 0;
    std::uint16_t third = 0;
    std::array<Byte, 8> rest{};

    bool operator==(const Guid&) const = default;
};

// "{01234567-89AB-CDEF-0123-456789ABCDEF}", upper case.
[[nodiscard]] std::string ToText(const Guid& guid);

// Parses a text written by ToText, ignoring case; none for any other text.
[[nodiscard]] std::optional<Guid> GuidFromText(std::string_view sText);

class GuidCreator {
public:
    virtual ~GuidCreator() = default;

    // A new identifier. The default creates a random one (version 4 of RFC 4122).
    [[nodiscard]] virtual Guid CreateSafeGuid();
};

} // namespace qx
