// QXPosDisplayView: the face of QXPosDisplay: the keys of the POS module, 7 rows of 15, and below
// them those of the others that the host has named, as a KeyGrid named "posDisplay", whose keys
// are called "cmdPOS_20".
#pragma once

#include "qxcontrols/pos/QXPosDisplay.h"
#include "views/Bindings.h"
#include "views/KeyGrid.h"
#include "views/SentTexts.h"

#include <functional>

namespace qx::views {

class QXPosDisplayView : public QWidget {
    Q_OBJECT
public:
    // The display outlives the view.
    explicit QXPosDisplayView(QXPosDisplay& display, QWidget* parent = nullptr);

    // Texts that the display does not have: a key's legend, the sequence of its block, and the
    // layout that names the sequence's keys (may be null).
    using TextOfKey = std::function<QString(Integer nKeyIndex)>;
    using LayoutInUse = std::function<const QXKeyboardLayoutData*()>;
    void SetTexts(TextOfKey legend, SequenceOfKey sequence, LayoutInUse layout);

    // For a programmer: an arrow key reaches a key, Control with a click or Space takes one, and
    // Control with an arrow moves without reaching. Without these, only clicks act.
    using KeyAction = std::function<void(Integer nKeyIndex)>;
    void SetActions(KeyAction reach, KeyAction take);

    [[nodiscard]] KeyGrid* Grid() const { return m_grid; }
    void ShowKeys();

protected:
    void changeEvent(QEvent* event) override; // other colours, other language

private:
    void FollowFocus();
    [[nodiscard]] KeyCap CapOf(Integer nKeyIndex, SentTexts& texts) const;

    QXPosDisplay& m_display;
    KeyGrid* m_grid;
    TextOfKey m_legend;
    SequenceOfKey m_sequence;
    LayoutInUse m_layout;
    KeyAction m_reach, m_take;
    Subscription m_refreshed, m_focusMoved;
};

} // namespace qx::views
