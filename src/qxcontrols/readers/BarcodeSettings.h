// All settings of the barcode reader, their limits and their defaults.
#pragma once

#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/readers/BarcodeOptionPage.h"
#include "qxcontrols/readers/BarcodePage.h"
#include "qxcontrols/readers/MagneticTrack.h"

#include <array>

namespace qx {

struct BarcodeSettings {
    std::array<BarcodeOptionPage, kBarcodeOptionPages> pages;
    // Their availability and captions are not used.
    std::array<MagneticTrack, kBarcodeReaders> readers;
};

// Sets the code lengths that the symbologies permit.
void SetBarcodeLimits(BarcodeSettings& settings);

// Sets the ranges of code lengths to their limits, the flags that have a default, and the readers;
// other flags are unchanged.
void SetBarcodeDefaults(BarcodeSettings& settings);

} // namespace qx
