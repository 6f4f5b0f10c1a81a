// KeyboardSequences: one key sequence for each of the keyboard's key ids.
#pragma once

#include "qxcontrols/keys/KeySequence.h"

#include <array>

namespace qx {

class KeyboardSequences {
public:
    static constexpr Integer kMinKeyID = 0;
    static constexpr Integer kMaxKeyID = 140;
    [[nodiscard]] Integer MinKeyID() const { return kMinKeyID; }
    [[nodiscard]] Integer MaxKeyID() const { return kMaxKeyID; }

    // The sequence of key lID. Throws std::out_of_range outside 0 to 140.
    [[nodiscard]] KeySequence& Key(Long lID);
    [[nodiscard]] const KeySequence& Key(Long lID) const;

    // Remove the codes of one key (none outside 0 to 140), or of all; assignments are unchanged.
    void CleanKey(Long lID);
    void CleanAll();

    // Removes the assignment to a key (the position code) from all sequences; their codes are
    // unchanged.
    void SetAllAsUnsused();
    // The number of sequences that are assigned to no key.
    [[nodiscard]] Integer GetNumberOfProgamableKeys() const;

private:
    std::array<KeySequence, kMaxKeyID + 1> m_keys;
};

} // namespace qx
