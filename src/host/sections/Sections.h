// The sections of the configuration document, in its order.
#pragma once

#include "host/Section.h"

#include <memory>
#include <vector>

namespace qx::host {

[[nodiscard]] std::unique_ptr<Section> MakeCommonKeyboardSection(const Platform& platform);
[[nodiscard]] std::unique_ptr<Section> MakeMagnetCardSection(const Platform& platform);
[[nodiscard]] std::unique_ptr<Section> MakeBarcodeSection(const Platform& platform);
[[nodiscard]] std::vector<std::unique_ptr<Section>>
MakeFreeProgKeysSections(const Platform& platform);
[[nodiscard]] std::unique_ptr<Section> MakeLayeredFuncKeysSection(const Platform& platform);
[[nodiscard]] std::unique_ptr<Section> MakePosSection(const Platform& platform);

// One of each, with its own control that uses these services.
[[nodiscard]] std::vector<std::unique_ptr<Section>> MakeSections(const Platform& platform);

} // namespace qx::host
