#include "qxcontrols/keys/KeyboardSequences.h"

#include "qxcontrols/common/Trace.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace qx {

namespace {

bool IsKeyID(Long lID) {
    return lID >= KeyboardSequences::kMinKeyID && lID <= KeyboardSequences::kMaxKeyID;
}

} // namespace

const KeySequence& KeyboardSequences::Key(Long lID) const {
    Trace("KeyboardSequences.Key");
    if (!IsKeyID(lID))
        throw std::out_of_range("key id " + std::to_string(lID) + " is not one of 0 to 140");
    return m_keys[static_cast<std::size_t>(lID)];
}

KeySequence& KeyboardSequences::Key(Long lID) {
    return const_cast<KeySequence&>(std::as_const(*this).Key(lID));
}

void KeyboardSequences::CleanKey(Long lID) {
    Trace("KeyboardSequences.CleanKey");
    if (IsKeyID(lID))
        Key(lID).Clear();
}

void KeyboardSequences::CleanAll() {
    Trace("KeyboardSequences.CleanAll");
    for (KeySequence& key : m_keys)
        key.Clear();
}

void KeyboardSequences::SetAllAsUnsused() {
    Trace("KeyboardSequences.SetAllAsUnsused");
    for (KeySequence& key : m_keys)
        key.SetPositionCode(0);
}

Integer KeyboardSequences::GetNumberOfProgamableKeys() const {
    Trace("KeyboardSequences.GetNumberOfProgamableKeys");
    return static_cast<Integer>(
        std::count_if(m_keys.begin(), m_keys.end(),
                      [](const KeySequence& key) { return key.PositionCode() == 0; }));
}

} // namespace qx
