// QXPosDisplay: the grid of the POS keys.
//
// The grid stores no model: its owner paints it key by key, and a key is in use if it has a
// caption. Keys are numbered 1 to 150; the POS module has keys 1 to 105, and the others become
// visible once a call has named them. Other key indexes are ignored.
#pragma once

#include "qxcontrols/common/ChildControls.h"
#include "qxcontrols/common/Event.h"

#include <array>
#include <functional>

namespace qx {

struct PosButton : Button {
    Long BackColor = static_cast<Long>(0x8000000F); // the face colour of buttons
    Integer FontSize = 8;                           // points
    bool FontBold = false;
};

class QXPosDisplay {
public:
    static constexpr Integer kMinKey = 1;
    static constexpr Integer kMaxKey = 150;

    QXPosDisplay();
    ~QXPosDisplay();
    QXPosDisplay(const QXPosDisplay&) = delete;
    QXPosDisplay& operator=(const QXPosDisplay&) = delete;

    Event<Integer> KeyClicked; // nKeyIndex
    // Raised after each of the calls that change the grid, or once after PaintTogether.
    Event<> Refreshed;
    // Raised by each call that moves the input focus: the view must give the focus to that key,
    // wherever it is.
    Event<> FocusMoved;

    // An ordinary key in its current colour.
    void SetKeyCaption(Integer nIndex, std::string sCaption, std::string sToolTip);
    // An ordinary key without a caption.
    void SetAsUnused(Integer nIndex, Long lColor);
    // The current key, larger and bold, with the input focus.
    void SetAsCurrentCaption(Integer nIndex, std::string sCaption, std::string sToolTip);
    void SetKeyColor(Integer nIndex, Long lColor);
    // Moves the input focus to the key.
    void SetCursor(Integer nIndex);
    // Whether the key's caption is not blank.
    [[nodiscard]] bool IsUsedKey(Integer nIndex) const;

    // Runs `paint`; its calls of the above count as one change, and the input focus does not move.
    void PaintTogether(const std::function<void()>& paint);

    // The buttons by key index; entry 0 is not shown.
    std::array<PosButton, kMaxKey + 1> cmdPOS;
    // The key with the input focus; 0 if none.
    [[nodiscard]] Integer Focus() const { return m_focus; }

    // The user has clicked a key, which gets the input focus.
    void cmdPOS_Click(Integer Index);

private:
    template <typename Change>
    void ChangeKey(Integer nIndex, Change change);

    void MoveFocus(Integer nIndex);

    Integer m_focus = 0;
    bool m_painting = false;
};

} // namespace qx
