// Converts between screen pixels and hundredths of a millimetre, the unit in which containers give
// sizes.
#pragma once

#include "com/windows/Com.h"

namespace qx::com {

inline constexpr int kHundredthsPerInch = 2540;

[[nodiscard]] inline SIZE PixelsPerInch() {
    const HDC screen = GetDC(nullptr);
    const SIZE dots{GetDeviceCaps(screen, LOGPIXELSX), GetDeviceCaps(screen, LOGPIXELSY)};
    ReleaseDC(nullptr, screen);
    return dots;
}

[[nodiscard]] inline SIZE PixelsFromHundredths(SIZEL hundredths) {
    const SIZE dots = PixelsPerInch();
    return {MulDiv(hundredths.cx, dots.cx, kHundredthsPerInch),
            MulDiv(hundredths.cy, dots.cy, kHundredthsPerInch)};
}

} // namespace qx::com
