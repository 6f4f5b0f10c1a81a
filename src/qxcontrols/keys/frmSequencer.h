// frmSequencer: the editor in which the user records a key sequence.
//
// Codes come from clicks on the on-screen keys and from real keys, which the keyboard reports while
// it is in position-programming mode and which a timer asks for. The sequence can also be typed as
// text (see SequenceText.h); while the user is at that, the keyboard types normally. The form owns
// the sequence while it is edited; the shared objects belong to the QXSequencer that opened it. Its
// host shows it, closes it on Closed, and calls the Form_ and App_ members as it is activated and
// left.
#pragma once

#include "qxcontrols/common/ChildControls.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"
#include "qxcontrols/platform/Platform.h"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace qx {

class QXKeyboardAccess;
class QXSequencer;

class frmSequencer {
public:
    explicit frmSequencer(const Platform& platform = {});
    frmSequencer(const frmSequencer&) = delete;
    frmSequencer& operator=(const frmSequencer&) = delete;

    // Raised once after any change of what the form shows, and when the user leaves it.
    Event<> Refreshed;
    Event<> Closed;

    // What the form works with; null clears.
    void SetLayoutSource(QXKeyboardLayoutData* layout);
    void SetPrefSource(const QXProgSettings* preferences);
    void SetKeyboard(QXKeyboardAccess* keyboard) { m_keyboard = keyboard; }
    void SetParentSequencer(QXSequencer* parent) { m_parent = parent; }

    // The sequence being edited, as its KeyString.
    [[nodiscard]] const std::string& KeyString() const { return m_sequence.KeyString(); }
    void SetKeyString(const std::string& sKeyString);
    // The most codes allowed, and the key being programmed, which is marked.
    [[nodiscard]] Integer MaxSeqSize() const { return m_maxSeqSize; }
    void SetMaxSeqSize(Integer nSize) { m_maxSeqSize = nSize; }
    void SetCurrProgKey(Integer nPositionCode) { layoutDisplay.SetCurrProgKey(nPositionCode); }
    // Whether the user left with OK.
    [[nodiscard]] bool OK() const { return m_ok; }
    // Whether leaving without OK loses anything: recorded codes, or text that has been typed.
    [[nodiscard]] bool IsChanged() const;
    // Where the keyboard is a simulated one: presses and releases a key of it, by position code and
    // by that plus 128. While PressesTwin holds, a click on the screen goes there, and what is
    // recorded comes back from the keyboard as from a real one.
    std::function<void(Long)> pressTwinKey;
    [[nodiscard]] bool PressesTwin() const { return m_pressesTwin; }
    void SetPressesTwin(bool fTwin) { m_pressesTwin = fTwin; }

    // Shows the parent's texts, the keys and the sequence.
    void PrepareDisplay();
    // Shows the texts of a sequencer that may not have opened the form.
    void Translate(QXSequencer& parent);
    void DisplayCurrentSeq();
    // Appends a code, or shows the size message when the sequence is full.
    void AddCode(Long lCode);
    // Both hide the size message.
    void RemoveLastCode();
    void RemoveAllCodes();
    // Takes over what has been typed, if anything has. False, with the fault shown, when that is no
    // sequence or is too long. Recording and leaving with OK do this first, and do nothing else
    // when it fails, so that nothing typed is lost.
    bool ApplyTyped();
    // How many codes the typed text has that was refused for having too many; 0: none was.
    [[nodiscard]] Integer TypedTooMany() const { return m_typedTooMany; }
    void ShowSizeMsg();
    void HideSizeMsg();
    void LeaveWithOK();
    void LeaveWithCancel();

    // The key scan: every 100 ms the keyboard is asked for the last key pressed.
    void editor_StartKeyScan();
    void editor_StopKeyScan();

    // The form's life on the screen.
    void Form_Load();
    void Form_Activate();
    void Form_Deactivate();
    void Form_Unload();
    // The host's application comes to the front, and leaves it: in the background the keyboard
    // types normally.
    void AppActivate();
    void AppDeactivate();
    [[nodiscard]] bool IsActive() const { return m_active; }

    QXLayoutDisplay layoutDisplay;
    Label lblCaption;  // the form's title
    Label lblSequence; // above the sequence
    TextBox txtSequence;
    TextBox txtTyped; // the sequence as text to be edited; needs a layout
    Label lblTypedFault;
    Label lblSizeMsg;
    Label lblRemaining; // how many codes still fit
    // Whether released keys are shown too; keys go by their names whenever there is a layout.
    CheckBox chkShowDetails;
    Button cmdOK, cmdCancel;
    std::array<Button, 2> cmdClean; // last code, all codes

    void cmdOK_Click() { LeaveWithOK(); }
    void cmdCancel_Click() { LeaveWithCancel(); }
    void cmdClean_Click(Integer Index);
    void chkShowDetails_Click() { DisplayCurrentSeq(); }
    void txtTyped_Change();
    void txtTyped_GotFocus();
    void txtTyped_LostFocus();
    void imgHelp_Click();

private:
    void tmrSequencer_Timer();
    void ShowTexts(QXSequencer& parent);
    void ShowSequence();
    [[nodiscard]] bool TakeTyped();
    void ForgetTyped();
    void ShowTypedFault(const std::string& sFault);
    void RunScan();
    void layoutDisplay_OnKeyClicked(Long lPositionCode);
    static void TraceForm(std::string_view sProcedure);

    QXKeyboardLayoutData* m_layout = nullptr;
    QXKeyboardAccess* m_keyboard = nullptr;
    QXSequencer* m_parent = nullptr;
    KeySequence m_sequence;
    std::string m_openedWith; // its KeyString
    Integer m_maxSeqSize = 0;
    Integer m_typedTooMany = 0;
    bool m_ok = false;
    bool m_active = false;
    bool m_scanning = false;
    bool m_inBackground = false;
    bool m_pressesTwin = false;
    bool m_typing = false;   // the user is in txtTyped
    std::string m_typedAsIs; // txtTyped when it stands for the sequence
    std::unique_ptr<FormTimer> m_tmrSequencer;
    Subscription m_keyClicked;
};

} // namespace qx
