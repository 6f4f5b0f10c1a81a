#include "host/sections/Sections.h"

#include <utility>

namespace qx::host {

std::vector<std::unique_ptr<Section>> MakeSections(const Platform& platform) {
    std::vector<std::unique_ptr<Section>> sections;
    sections.push_back(MakeCommonKeyboardSection(platform));
    sections.push_back(MakeMagnetCardSection(platform));
    sections.push_back(MakeBarcodeSection(platform));
    for (auto& section : MakeFreeProgKeysSections(platform))
        sections.push_back(std::move(section));
    sections.push_back(MakeLayeredFuncKeysSection(platform));
    sections.push_back(MakePosSection(platform));
    return sections;
}

} // namespace qx::host
