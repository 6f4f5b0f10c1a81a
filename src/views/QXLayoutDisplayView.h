// QXLayoutDisplayView: the face of QXLayoutDisplay: the keyboard as a KeyGrid named
// "layoutDisplay", whose keys are numbered by position code and called "cmdKey_30".
//
// In a setting, the key that has the focus is the current one: arrows click the keys they reach,
// and the focus follows the current key. In the sequence editor a click records a key, and arrows
// only move.
#pragma once

#include "qxcontrols/keys/QXLayoutDisplay.h"
#include "views/Bindings.h"
#include "views/KeyGrid.h"
#include "views/SentTexts.h"

#include <functional>
#include <string>

namespace qx::views {

class QXLayoutDisplayView : public QWidget {
    Q_OBJECT
public:
    // The display outlives the view.
    explicit QXLayoutDisplayView(QXLayoutDisplay& display, QWidget* parent = nullptr);

    // The sequences of programmed keys; the display only has whether a key is programmed.
    void SetSequences(SequenceOfKey sequenceOf);

    [[nodiscard]] KeyGrid* Grid() const { return m_grid; }
    void ShowKeys();

protected:
    void changeEvent(QEvent* event) override; // other colours, other language

private:
    void FollowSelection();
    [[nodiscard]] bool IsSetting() const;
    [[nodiscard]] bool IsProgrammable(Integer nPositionCode) const;
    [[nodiscard]] KeyCap CapOf(Integer nPositionCode, SentTexts& texts) const;
    [[nodiscard]] QString NameOf(const KeyCap& cap, const QString& sequence) const;

    QXLayoutDisplay& m_display;
    KeyGrid* m_grid;
    SequenceOfKey m_sequenceOf;
    Integer m_shownKey = -1; // as current
    Subscription m_refreshed, m_keySelected;
};

} // namespace qx::views
