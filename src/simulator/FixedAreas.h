// The size of the keyboard's memory, and the areas with fixed addresses.
#pragma once

#include "qxcontrols/device/MemoryMap.h"

#include <array>
#include <string_view>

namespace qx::sim {

struct Area {
    std::string_view name;
    Long address;
    Long size;

    [[nodiscard]] constexpr Long End() const { return address + size; }
    [[nodiscard]] constexpr bool Meets(const Area& other) const {
        return address < other.End() && other.address < End();
    }
};

inline constexpr Long kMemorySize = 128 * 1024;

[[nodiscard]] constexpr bool IsInMemory(Long lAddress, Long lSize) {
    return lAddress >= 0 && lSize >= 0 && lAddress <= kMemorySize - lSize;
}

inline constexpr Area kCapabilities{"the capability byte", kCapabilityAddress, 1};
inline constexpr Area kIdentification{"the identification", kIdentificationAddress,
                                      kIdentificationSize};
inline constexpr Area kCodePage{"the code page", kCodePageAddress, kCodePageSize};
inline constexpr Area kDescriptions{"the function keys' descriptions", kFuncKeyDescAddress,
                                    kFuncKeyDescSize};

inline constexpr std::array kFixedAreas{kCapabilities, kCodePage, kIdentification, kDescriptions};

// Whether the areas are in order of address, do not overlap and lie inside the memory.
constexpr bool IsInOrder() {
    Long end = 0;
    for (const Area& area : kFixedAreas) {
        if (area.address < end)
            return false;
        end = area.End();
    }
    return end <= kMemorySize;
}
static_assert(IsInOrder());

} // namespace qx::sim
