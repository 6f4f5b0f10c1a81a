// SentTexts: what keys send, as their caps, tool tips and names show it.
#pragma once

#include "qxcontrols/keys/KeySequence.h"
#include "qxcontrols/keys/SequenceItems.h"

#include <QString>

#include <functional>
#include <optional>

namespace qx::views {

class SentTexts {
public:
    // The layout may be null; it stays as it is as long as this object.
    explicit SentTexts(const QXKeyboardLayoutData* layout) : m_layout(layout) {}

    // For a cap: "Ctrl+C".
    [[nodiscard]] QString Brief(const KeySequence& sequence);
    // The keys one by one, for tool tips and screen readers: "Ctrl C".
    [[nodiscard]] QString Whole(const KeySequence& sequence) const;

private:
    const QXKeyboardLayoutData* m_layout;
    std::optional<SequenceItems> m_items; // made for the first sequence
};

// The sequence that a key sends; null for none.
using SequenceOfKey = std::function<const KeySequence*(Integer nKey)>;

} // namespace qx::views
