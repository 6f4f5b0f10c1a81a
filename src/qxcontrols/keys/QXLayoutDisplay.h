// QXLayoutDisplay: the keyboard on the screen, with one button for every position code.
//
// It places, labels and colours the buttons from the layout data and from the sequences passed to
// it, and reports clicks on buttons. As a setting it shows which keys are programmed; in the
// sequence editor it shows the key being programmed. The layout and the preferences must outlive
// the display; without preferences it uses its own colours.
#pragma once

#include "qxcontrols/common/ChildControls.h"
#include "qxcontrols/common/Event.h"
#include "qxcontrols/keys/KeyboardSequences.h"

#include <array>

namespace qx {

class QXKeyboardLayoutData;
class QXProgSettings;

enum DisplayType : Long {
    DISPLAY_SETTING = 0, // all keys by their state; all existing keys can be clicked
    DISPLAY_PROG = 1,    // the key being programmed; keys that a sequence can press can be clicked
};

struct KeyButton : Button {  // invisible if the keyboard does not have the key
    bool Programmed = false; // has a sequence
    Long BackColor = 0;      // a Windows colour value, as in the preferences
    Single Left = 0, Top = 0, Width = 0, Height = 0; // in the layout's unit
};

class QXLayoutDisplay {
public:
    QXLayoutDisplay();
    ~QXLayoutDisplay();
    QXLayoutDisplay(const QXLayoutDisplay&) = delete;
    QXLayoutDisplay& operator=(const QXLayoutDisplay&) = delete;

    Event<Long> OnKeyClicked; // lPositionCode
    // Raised once after any change of the display.
    Event<> Refreshed;
    // Raised by each SelectKey: the view must give that key the keyboard focus, wherever the focus
    // is.
    Event<> KeySelected;

    // The type of display; takes effect at the next redraw.
    [[nodiscard]] DisplayType DisplayKeyType() const { return m_type; }
    void SetDisplayKeyType(DisplayType type) { m_type = type; }
    [[nodiscard]] Integer CurrProgKey() const { return m_currProgKey; } // marked; -1 if none
    void SetCurrProgKey(Integer nPositionCode) { m_currProgKey = nPositionCode; }
    [[nodiscard]] QXKeyboardLayoutData* LayoutSource() const { return m_layout; }
    void SetLayoutSource(QXKeyboardLayoutData* layout) { m_layout = layout; }
    void SetPrefSource(const QXProgSettings* preferences) { m_preferences = preferences; }

    // Redraw all keys, or one of them; without a layout, or for a position code outside 0 to 140,
    // nothing happens.
    void ReloadKeysSettings(const KeyboardSequences& KeyData);
    void ReloadSettingsForKey(Long lID, const KeyboardSequences& KeyData);

    // Gives a key the keyboard focus; ignored for a position code outside 0 to 140.
    void SelectKey(Integer nPositionCode);
    [[nodiscard]] Integer SelectedKey() const { return m_selectedKey; } // initially -1

    void SetUserFontSize(Integer nNewSize);
    [[nodiscard]] Integer UserFontSize() const { return m_fontSize; } // of the captions, in points

    // The buttons by position code.
    std::array<KeyButton, KeyboardSequences::kMaxKeyID + 1> cmdKey;

    void cmdKey_Click(Integer Index);

private:
    struct Colors {
        Long programmed, empty, current, unused;
    };
    [[nodiscard]] Colors CurrentColors() const;
    [[nodiscard]] bool HasLayout() const;
    void Redraw(Long lID, const KeyboardSequences& keys, const Colors& colors);
    [[nodiscard]] Long ColorOf(Long lID, const KeyboardSequences& keys, const Colors& colors) const;

    DisplayType m_type = DISPLAY_SETTING;
    Integer m_currProgKey = 0;
    Integer m_selectedKey = -1;
    Integer m_fontSize;
    QXKeyboardLayoutData* m_layout = nullptr;
    const QXProgSettings* m_preferences = nullptr;
};

} // namespace qx
