// Which section's sequence a key sends when several program it (see KeySender.h), and its name.
#pragma once

#include "host/Section.h"
#include "host/SettingName.h"
#include "qxcontrols/pos/KeySender.h"

#include <optional>
#include <string>
#include <vector>

namespace qx::host {

class Configuration;

// What these sections have for the key with a position code.
[[nodiscard]] KeyModules ModulesOf(const std::vector<Section*>& sections, Integer nPositionCode);

struct SentSequence {
    Section* section;
    Integer key;         // a POS key index or a position code
    std::string element; // whose sequence it is: "/pos/blocks[1]"
    const KeySequence* sequence;
};

// None if the key sends its own codes. With a POS key index it is pressed at that place alone.
[[nodiscard]] std::optional<SentSequence> SentBy(const std::vector<Section*>& sections,
                                                 Integer nPositionCode, Integer nPosKey = 0);

// The name of the module's key or block: "POS keys › Key 3 (F2)". Only function keys have a layer.
[[nodiscard]] SettingName NameOf(const Configuration& configuration, KeyboardModuleIDs eModule,
                                 Integer nKey, std::optional<Integer> layer = {});

} // namespace qx::host
