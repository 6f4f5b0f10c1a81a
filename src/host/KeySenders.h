// Which section's sequence a key sends when several program it (see KeySender.h).
#pragma once

#include "host/Section.h"
#include "qxcontrols/pos/KeySender.h"

#include <optional>
#include <string>
#include <vector>

namespace qx::host {

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

} // namespace qx::host
