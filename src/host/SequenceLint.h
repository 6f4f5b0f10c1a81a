// Warnings about key sequences that are valid but probably not intended.
#pragma once

#include "host/Configuration.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qx {
class QXKeyboardLayoutData;
}

namespace qx::host {

enum class SequenceWarningKind {
    NeverReleased, // the key is still pressed at the end of the sequence
    NeverPressed,  // the key is released without having been pressed
    KeyAbove127,   // the same, and the layout has a key whose number is the code: keys above 127
                   // cannot be pressed through a sequence
    NotInLayout,   // the layout does not have such a key
    NeverSent,     // another module's sequence for the key is sent instead
};

// Its name for programs, "never-released".
[[nodiscard]] std::string_view CodeOf(SequenceWarningKind kind);

struct SequenceWarning {
    SequenceWarningKind kind;
    Integer key;              // 1 to 127; of NeverSent, the key that has the sequence
    std::size_t at;           // the index of the code that causes it, from 0
    std::string byPlace = {}; // of the element that has the other sequence: "/pos/blocks[1]"
    SettingName by = {};      // the same

    bool operator==(const SequenceWarning&) const = default;
};

// The warnings about one sequence, in the order of the codes that cause them. Without a layout,
// warnings that need one are omitted.
[[nodiscard]] std::vector<SequenceWarning> LintSequence(std::span<const Integer> codes,
                                                        const QXKeyboardLayoutData* layout);

// A warning about a sequence of a configuration.
struct SettingWarning {
    std::string place; // of the setting, as in Setting
    SettingName name;  // of the setting
    SequenceWarning warning;
};

// The warning about a section's sequence for a key that sends another section's; the position code
// and the POS key index as in SentBy.
[[nodiscard]] std::optional<SequenceWarning> LintSender(const Configuration& configuration,
                                                        const std::vector<Section*>& sections,
                                                        const Section& section,
                                                        Integer nPositionCode, Integer nPosKey = 0);

// The warnings about all sequences of these sections.
[[nodiscard]] std::vector<SettingWarning> Lint(const Configuration& configuration,
                                               const std::vector<Section*>& sections,
                                               const QXKeyboardLayoutData* layout);

} // namespace qx::host
