#include "host/ColourSet.h"

#include <algorithm>

namespace qx::host {

namespace {

// From red, green and blue, as colours are written elsewhere.
constexpr Long Rgb(Long color) {
    return (color & 0xFF) << 16 | (color & 0xFF00) | color >> 16;
}

constexpr ColourSet kLight = {
    Rgb(0xF1F3F5),
    Rgb(0x1D5FBF),
    Rgb(0xFFFFFF),
    Rgb(0xD6E6FB),
    {Rgb(0x332288), Rgb(0x88CCEE), Rgb(0x44AA99), Rgb(0x117733), Rgb(0x999933), Rgb(0xDDCC77),
     Rgb(0xCC6677), Rgb(0x882255), Rgb(0xAA4499), Rgb(0x332211)},
};

constexpr ColourSet kDark = {
    Rgb(0x2A2D31),
    Rgb(0x6FA8F5),
    Rgb(0x3A3F45),
    Rgb(0x27486E),
    {Rgb(0xBBFCFF), Rgb(0x1BBAA7), Rgb(0x557500), Rgb(0xDCFF33), Rgb(0xE15F78), Rgb(0x97578C),
     Rgb(0x9265F9), Rgb(0xFFEFCD), Rgb(0xBBA30A), Rgb(0xB6B0FF)},
};

Long DefaultOf(Preference preference) {
    return InfoOf(preference).loadDefault;
}

ColourSet Classic() {
    ColourSet set{DefaultOf(Preference::ColorUnused),
                  DefaultOf(Preference::ColorCurr),
                  DefaultOf(Preference::ColorEmpty),
                  DefaultOf(Preference::ColorProg),
                  {}};
    for (std::size_t block = 0; block < set.blocks.size(); ++block)
        set.blocks[block] = DefaultOf(
            static_cast<Preference>(static_cast<std::size_t>(Preference::POSColorBlock0) + block));
    return set;
}

} // namespace

ColourSet ColourSetOf(ColourSetId id) {
    switch (id) {
    case ColourSetId::Light:
        return kLight;
    case ColourSetId::Dark:
        return kDark;
    case ColourSetId::Classic:
        return Classic();
    }
    return {};
}

void UseColours(QXProgSettings& preferences, ColourSetId id) {
    const ColourSet set = ColourSetOf(id);
    preferences.SetColorUnused(set.unused);
    preferences.SetColorCurr(set.current);
    preferences.SetColorEmpty(set.empty);
    preferences.SetColorProg(set.programmed);
    preferences.SetPOSColorUnused(set.unused);
    preferences.SetPOSColorCurrent(set.current);
    for (Integer block = 0; block < QXProgSettings::kPosBlocks; ++block)
        preferences.DefPOSColorBlock(block, set.blocks[static_cast<std::size_t>(block)]);
}

std::optional<ColourSetId> ColoursInUse(const QXProgSettings& preferences) {
    for (const ColourSetId id : kColourSets) {
        const ColourSet set = ColourSetOf(id);
        bool isSame =
            preferences.ColorUnused() == set.unused && preferences.ColorCurr() == set.current &&
            preferences.ColorEmpty() == set.empty && preferences.ColorProg() == set.programmed &&
            preferences.POSColorUnused() == set.unused &&
            preferences.POSColorCurrent() == set.current;
        for (Integer block = 0; block < QXProgSettings::kPosBlocks; ++block)
            isSame = isSame && preferences.POSColorBlock(block) ==
                                   set.blocks[static_cast<std::size_t>(block)];
        if (isSame)
            return id;
    }
    return {};
}

} // namespace qx::host
