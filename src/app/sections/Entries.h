// The entries of the application's sections, in the order of the configuration.
#pragma once

#include "app/sections/SectionFace.h"

namespace qx::app {

extern const SectionEntry kCommonKeyboard;
extern const SectionEntry kMagnetCard;
extern const SectionEntry kBarcode;
extern const SectionEntry kFreeProgKeys;
extern const SectionEntry kFuncKeys4610;
extern const SectionEntry kFuncKeys4620;
extern const SectionEntry kFuncKeys4630;
extern const SectionEntry kLayeredFuncKeys;
extern const SectionEntry kPos;

inline constexpr const SectionEntry* kSectionEntries[] = {
    &kCommonKeyboard, &kMagnetCard,   &kBarcode,         &kFreeProgKeys, &kFuncKeys4610,
    &kFuncKeys4620,   &kFuncKeys4630, &kLayeredFuncKeys, &kPos,
};

} // namespace qx::app
