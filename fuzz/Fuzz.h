// Helpers for the fuzz targets.
#pragma once

#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/platform/GuidCreator.h"
#include "qxcontrols/platform/Platform.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace qx::fuzz {

// Stops the run if a property does not hold; the input is then kept.
inline void Require(bool holds, std::string_view property) {
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %.*s\n", static_cast<int>(property.size()),
                 property.data());
    std::abort();
}

// The same for two texts that must be equal; shows them if they are not.
inline void RequireEqual(const std::string& first, const std::string& second,
                         std::string_view property) {
    if (first != second)
        std::fprintf(stderr, "first:\n%s\nsecond:\n%s\n", first.c_str(), second.c_str());
    Require(first == second, property);
}

inline std::string_view AsText(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// The US layout.
inline QXKeyboardLayoutData& UsLayout() {
    static QXKeyboardLayoutData layout;
    if (!layout.Loaded()) {
        layout.SetLayoutPath(QX_LAYOUTS);
        Require(layout.OpenLayoutByName("us.qxl"), "the shipped layout opens");
    }
    return layout;
}

// Services for controls; every new identifier is the same.
inline Platform Services() {
    struct SameGuid : GuidCreator {
        Guid CreateSafeGuid() override { return {1, 2, 3, {4}}; }
    };
    static SameGuid guids;
    Platform platform;
    platform.guidCreator = &guids;
    return platform;
}

} // namespace qx::fuzz
