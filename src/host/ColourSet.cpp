#include "host/ColourSet.h"

#include <algorithm>
#include <iterator>
#include <map>

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
    Rgb(0xFFFFFF),
    {Rgb(0x332288), Rgb(0x88CCEE), Rgb(0x44AA99), Rgb(0x117733), Rgb(0x999933), Rgb(0xDDCC77),
     Rgb(0xCC6677), Rgb(0x882255), Rgb(0xAA4499), Rgb(0x332211)},
};

constexpr ColourSet kDark = {
    Rgb(0x2A2D31),
    Rgb(0x6FA8F5),
    Rgb(0x3A3F45),
    Rgb(0x27486E),
    Rgb(0x3A3F45),
    {Rgb(0xBBFCFF), Rgb(0x1BBAA7), Rgb(0x557500), Rgb(0xDCFF33), Rgb(0xE15F78), Rgb(0x97578C),
     Rgb(0x9265F9), Rgb(0xFFEFCD), Rgb(0xBBA30A), Rgb(0xF69E6F)},
};

Long DefaultOf(Preference preference) {
    return InfoOf(preference).loadDefault;
}

Preference BlockColour(std::size_t block) {
    return static_cast<Preference>(static_cast<std::size_t>(Preference::POSColorBlock0) + block);
}

ColourSet Classic() {
    ColourSet set{DefaultOf(Preference::ColorUnused),    DefaultOf(Preference::ColorCurr),
                  DefaultOf(Preference::ColorEmpty),     DefaultOf(Preference::ColorProg),
                  DefaultOf(Preference::POSColorUnused), {}};
    for (std::size_t block = 0; block < set.blocks.size(); ++block)
        set.blocks[block] = DefaultOf(BlockColour(block));
    return set;
}

// The set's colour for each preference that is a colour.
std::map<Preference, Long> ColoursOf(ColourSetId id) {
    const ColourSet set = ColourSetOf(id);
    std::map<Preference, Long> colours = {
        {Preference::ColorUnused, set.unused},     {Preference::ColorCurr, set.current},
        {Preference::ColorEmpty, set.empty},       {Preference::ColorProg, set.programmed},
        {Preference::POSColorUnused, set.noBlock}, {Preference::POSColorCurrent, set.current}};
    for (std::size_t block = 0; block < set.blocks.size(); ++block)
        colours.emplace(BlockColour(block), set.blocks[block]);
    return colours;
}

// How many of the preferences' colours are those of the set.
std::ptrdiff_t CountOf(const std::map<Preference, Long>& colours,
                       const QXProgSettings& preferences) {
    return std::ranges::count_if(colours, [&](const auto& colour) {
        return std::get<Long>(preferences.Get(InfoOf(colour.first).property)) == colour.second;
    });
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
    for (const auto& [preference, lColor] : ColoursOf(id))
        preferences.Set(InfoOf(preference).property, lColor);
}

std::optional<ColourSetId> ColoursInUse(const QXProgSettings& preferences) {
    for (const ColourSetId id : kColourSets) {
        const auto colours = ColoursOf(id);
        if (CountOf(colours, preferences) == std::ssize(colours))
            return id;
    }
    return {};
}

Long DesignedColour(const QXProgSettings& preferences, Preference preference) {
    const ColourSetId nearest = *std::ranges::max_element(
        kColourSets, {}, [&](ColourSetId id) { return CountOf(ColoursOf(id), preferences); });
    return ColoursOf(nearest).at(preference);
}

} // namespace qx::host
