#include "host/sections/Sections.h"

namespace qx::host {

namespace {

using Maker = std::unique_ptr<Section> (*)(const Platform&);

constexpr Maker kMakers[] = {
    MakeCommonKeyboardSection,
    MakeMagnetCardSection,
};

} // namespace

std::vector<std::unique_ptr<Section>> MakeSections(const Platform& platform) {
    std::vector<std::unique_ptr<Section>> sections;
    for (const Maker make : kMakers)
        sections.push_back(make(platform));
    return sections;
}

} // namespace qx::host
