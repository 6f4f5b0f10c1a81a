#include "qxcontrols/readers/MagneticBlocks.h"

#include "qxcontrols/blocks/BlockRoutines.h"

namespace qx {

namespace {

// A setting stored in one bit.
struct Switch {
    bool (*isOn)(const MagneticSettings&);
    void (*turn)(MagneticSettings&, bool);
};

template <std::size_t Track, bool (MagneticTrack::*Get)() const, void (MagneticTrack::*Set)(bool)>
constexpr Switch kTrackSwitch = {
    [](const MagneticSettings& settings) { return (settings.tracks[Track - 1].*Get)(); },
    [](MagneticSettings& settings, bool isOn) { (settings.tracks[Track - 1].*Set)(isOn); },
};

template <std::size_t Track>
constexpr Switch kTrackHeader =
    kTrackSwitch<Track, &MagneticTrack::HeaderEnabled, &MagneticTrack::SetHeaderEnabled>;
template <std::size_t Track>
constexpr Switch kTrackTerminator =
    kTrackSwitch<Track, &MagneticTrack::TerminatorEnabled, &MagneticTrack::SetTerminatorEnabled>;
template <std::size_t Track>
constexpr Switch kTrack = kTrackSwitch<Track, &MagneticTrack::Enabled, &MagneticTrack::SetEnabled>;

using OptionOf = OptionBool& (MagneticOptions::*)();
using ConstOptionOf = const OptionBool& (MagneticOptions::*)() const;
template <OptionOf Option, ConstOptionOf ConstOption>
constexpr Switch kOption = {
    [](const MagneticSettings& settings) { return (settings.options.*ConstOption)().Value(); },
    [](MagneticSettings& settings, bool isOn) { (settings.options.*Option)().SetValue(isOn); },
};
constexpr Switch kSendImmediate =
    kOption<&MagneticOptions::SendImmediate, &MagneticOptions::SendImmediate>;
constexpr Switch kVerifyLRC = kOption<&MagneticOptions::VerifyLRC, &MagneticOptions::VerifyLRC>;
constexpr Switch kVerifyLastChar =
    kOption<&MagneticOptions::VerifyLastChar, &MagneticOptions::VerifyLastChar>;

constexpr BitField<Switch> kSwitches[] = {
    {0, 0, kTrackHeader<1>},     {0, 1, kTrackTerminator<1>}, {0, 2, kTrackHeader<2>},
    {0, 3, kTrackTerminator<2>}, {0, 4, kTrackHeader<3>},     {0, 5, kTrackTerminator<3>},
    {0, 6, kTrackHeader<4>},     {0, 7, kTrackTerminator<4>},

    {1, 0, kTrack<1>},           {1, 1, kTrack<2>},           {1, 2, kTrack<3>},
    {1, 3, kTrack<4>},

    {2, 4, kSendImmediate},      {2, 5, kVerifyLRC},          {2, 6, kVerifyLastChar},
};

constexpr FixedBits kFixedSwitches[] = {
    {1, 0xF0, 0x00}, {2, 0x8F, 0x0E}, // the device needs bits 1 to 3 set
};

static_assert([] {
    BlockCoverage<kMagneticSwitchesSize> coverage;
    coverage.Claim(kSwitches);
    coverage.Claim(kFixedSwitches);
    return coverage.IsExact();
}());

} // namespace

std::string EncodeMagneticSwitches(const MagneticSettings& settings) {
    std::string block(static_cast<std::size_t>(kMagneticSwitchesSize), '\0');
    EncodeFixedBits(kFixedSwitches, block);
    EncodeBits(kSwitches, block, [&](const Switch& s) { return s.isOn(settings); });
    return block;
}

void DecodeMagneticSwitches(std::string_view block, MagneticSettings& settings) {
    DecodeBits(kSwitches, block, [&](const Switch& s, bool isOn) { s.turn(settings, isOn); });
}

} // namespace qx
