// frmSequencer: the editor in which the user records a key sequence.
//
// Codes come from clicks on the on-screen keys and from real keys, which the keyboard reports in
// position-programming mode and a timer polls. The sequence can also be typed as text (see
// SequenceText.h); meanwhile the keyboard types normally. The form owns the sequence during
// editing; the shared objects belong to the QXSequencer that opened it. Its host shows it, closes
// it on Closed, and calls the Form_ and App_ members when it is activated and deactivated.
#pragma once

#include "qxcontrols/common/ChildControls.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"
#include "qxcontrols/platform/Platform.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

class QXKeyboardAccess;
class QXSequencer;

class frmSequencer {
public:
    explicit frmSequencer(const Platform& platform = {});
    frmSequencer(const frmSequencer&) = delete;
    frmSequencer& operator=(const frmSequencer&) = delete;

    // Raised once after any change of the display, and when the user leaves the form.
    Event<> Refreshed;
    Event<> Closed;

    // The services that the form uses; null clears.
    void SetLayoutSource(QXKeyboardLayoutData* layout);
    void SetPrefSource(const QXProgSettings* preferences);
    void SetKeyboard(QXKeyboardAccess* keyboard) { m_keyboard = keyboard; }
    void SetParentSequencer(QXSequencer* parent) { m_parent = parent; }

    // The sequence being edited, as its KeyString.
    [[nodiscard]] const std::string& KeyString() const { return m_sequence.KeyString(); }
    void SetKeyString(const std::string& sKeyString);
    // Its codes; none if one is not from 0 to 255.
    [[nodiscard]] std::optional<std::vector<Byte>> Codes() const { return m_sequence.Bytes(); }
    // The maximum number of codes, and the key being programmed, which is marked.
    [[nodiscard]] Integer MaxSeqSize() const { return m_maxSeqSize; }
    void SetMaxSeqSize(Integer nSize) { m_maxSeqSize = nSize; }
    void SetCurrProgKey(Integer nPositionCode) { layoutDisplay.SetCurrProgKey(nPositionCode); }
    // Whether the user left with OK.
    [[nodiscard]] bool OK() const { return m_ok; }
    // Whether leaving without OK loses anything: recorded codes, or typed text.
    [[nodiscard]] bool IsChanged() const;
    // Whether txtTyped has a text that is not yet taken into the sequence.
    [[nodiscard]] bool HasTyped() const { return txtTyped.Text != m_typedAsIs; }
    // For a simulated keyboard: presses and releases one of its keys, by position code and by that
    // plus 128. While PressesTwin is true, clicks on the screen go there, and the recorded codes
    // come from the keyboard, as from a real one.
    std::function<void(Long)> pressTwinKey;
    [[nodiscard]] bool PressesTwin() const { return m_pressesTwin; }
    void SetPressesTwin(bool fTwin) { m_pressesTwin = fTwin; }

    // Where the next codes are put in, as the number of codes before that place; at first, and
    // after RemoveLastCode and typed text, at the end.
    [[nodiscard]] std::size_t Caret() const;
    void SetCaret(std::size_t codes);
    // The keys that are held, such as 58 for Ctrl, in the order in which they were pressed. A click
    // on the screen then records their presses, the key, and their releases, all of them or none,
    // and they are held no longer.
    [[nodiscard]] const std::vector<Byte>& Held() const { return m_held; }
    void Hold(Byte key, bool fHeld);
    // Puts codes in at the caret: all of them, or none if there is no room, which the size message
    // reports. False if nothing was put in.
    bool Insert(const std::vector<Byte>& codes);
    // Replaces the sequence by another arrangement of it. Typed text that is pending is taken
    // instead.
    void Rearrange(const std::vector<Byte>& codes, std::size_t caret);

    // Displays the parent's texts, the keys and the sequence.
    void PrepareDisplay();
    // Displays the texts of a sequencer that may not have opened the form.
    void Translate(QXSequencer& parent);
    void DisplayCurrentSeq();
    // Puts a code in at the caret, or shows the size message if the sequence is full.
    void AddCode(Long lCode);
    // Both hide the size message.
    void RemoveLastCode();
    void RemoveAllCodes();
    // Accepts the typed text, if any. False, with the error displayed, if it is not a sequence or
    // too long. Recording and leaving with OK call this first, and do nothing else if it fails, so
    // that no typed text is lost.
    bool ApplyTyped();
    // The number of codes in typed text that was refused as too long; otherwise 0.
    [[nodiscard]] Integer TypedTooMany() const { return m_typedTooMany; }
    void ShowSizeMsg();
    void HideSizeMsg();
    void LeaveWithOK();
    void LeaveWithCancel();

    // The key scan: every 100 ms the keyboard is polled for the last key pressed.
    void editor_StartKeyScan();
    void editor_StopKeyScan();

    // The form's life on the screen.
    void Form_Load();
    void Form_Activate();
    void Form_Deactivate();
    void Form_Unload();
    // The host's application is activated or deactivated: in the background the keyboard types
    // normally.
    void AppActivate();
    void AppDeactivate();

    QXLayoutDisplay layoutDisplay;
    Label lblCaption;  // the form's title
    Label lblSequence; // above the sequence
    TextBox txtSequence;
    TextBox txtTyped; // the sequence as editable text; needs a layout
    Label lblTypedFault;
    Label lblSizeMsg;
    Label lblRemaining; // the number of codes that still fit
    // Whether released keys are shown too; keys are shown by name if there is a layout.
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
    [[nodiscard]] bool HasRoomFor(std::size_t codes) const;
    void PutIn(Integer nCode);
    static void TraceForm(std::string_view sProcedure);

    QXKeyboardLayoutData* m_layout = nullptr;
    QXKeyboardAccess* m_keyboard = nullptr;
    QXSequencer* m_parent = nullptr;
    KeySequence m_sequence;
    std::optional<std::size_t> m_caret; // not at the end
    std::vector<Byte> m_held;
    std::string m_openedWith; // its KeyString
    Integer m_maxSeqSize = 0;
    Integer m_typedTooMany = 0;
    bool m_ok = false;
    bool m_scanning = false;
    bool m_inBackground = false;
    bool m_pressesTwin = false;
    bool m_typing = false;   // txtTyped has the focus
    std::string m_typedAsIs; // txtTyped's text for the current sequence
    std::unique_ptr<FormTimer> m_tmrSequencer;
    Subscription m_keyClicked;
};

} // namespace qx
