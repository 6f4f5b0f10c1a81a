// QXSequencer: opens the sequence editor.
//
// A module control's host creates one, passes it the shared services, and calls ShowSequenceEditor
// when a control requests an edit. The host shows the form itself, through Platform::modalForms.
#pragma once

#include "qxcontrols/common/ButtonCaption.h"
#include "qxcontrols/common/Event.h"
#include "qxcontrols/keys/frmSequencer.h"
#include "qxcontrols/platform/Platform.h"

#include <string>
#include <utility>

namespace qx {

class QXSequencer {
public:
    explicit QXSequencer(const Platform& platform = {});
    ~QXSequencer();
    QXSequencer(const QXSequencer&) = delete;
    QXSequencer& operator=(const QXSequencer&) = delete;

    // The user asks for help.
    Event<> UserNeedsHelp;
    void RaiseHelp();

    // The shared services, which must outlive this object. Null clears.
    [[nodiscard]] QXKeyboardLayoutData* LayoutSource() const { return m_layout; }
    void SetLayoutSource(QXKeyboardLayoutData* layout) { m_layout = layout; }
    void SetKeyboard(QXKeyboardAccess* keyboard) { m_keyboard = keyboard; }
    void SetPrefSource(const QXProgSettings* preferences) { m_preferences = preferences; }

    // Lets the user edit the sequence of key nPosCode, with at most nMaxLength codes. True if the
    // user left with OK; sNewSeq is then the new sequence, otherwise it is unchanged. Nothing is
    // shown while the editor is already open, without a keyboard, if the keyboard refuses
    // position-programming mode, or for a sequence of more than 32767 codes. However the editor
    // ends, the keyboard leaves that mode; exceptions of the host while it shows the form are
    // passed on.
    bool ShowSequenceEditor(Integer nPosCode, const std::string& sCurrSeq, std::string& sNewSeq,
                            Integer nMaxLength);

    // Pass texts, key colours and the captions' font size on to the form.
    void Translate();
    void ReloadKeySettings();
    void SetKeyFontSize(Integer nNewSize);

    [[nodiscard]] ButtonCaption& ButtonOK() { return m_buttonOK; }
    void SetButtonOK(const ButtonCaption& caption) { m_buttonOK = caption; }
    [[nodiscard]] ButtonCaption& ButtonCancel() { return m_buttonCancel; }
    void SetButtonCancel(const ButtonCaption& caption) { m_buttonCancel = caption; }
    [[nodiscard]] ButtonCaption& ButtonCleanLast() { return m_buttonCleanLast; }
    void SetButtonCleanLast(const ButtonCaption& caption) { m_buttonCleanLast = caption; }
    [[nodiscard]] ButtonCaption& ButtonCleanAll() { return m_buttonCleanAll; }
    void SetButtonCleanAll(const ButtonCaption& caption) { m_buttonCleanAll = caption; }
    [[nodiscard]] const std::string& SequenceCaption() const { return m_sequenceCaption; }
    void SetSequenceCaption(std::string sText) { m_sequenceCaption = std::move(sText); }
    [[nodiscard]] const std::string& EditorCaption() const { return m_editorCaption; }
    void SetEditorCaption(std::string sText) { m_editorCaption = std::move(sText); }
    [[nodiscard]] const std::string& SequenceSizeMessage() const { return m_sizeMessage; }
    void SetSequenceSizeMessage(std::string sText) { m_sizeMessage = std::move(sText); }
    [[nodiscard]] const std::string& ShowDetails() const { return m_showDetails; }
    void SetShowDetails(std::string sText) { m_showDetails = std::move(sText); }
    // Whether the editor initially shows released keys.
    [[nodiscard]] bool DoShowDetails() const { return m_doShowDetails; }
    void SetDoShowDetails(bool fShow) { m_doShowDetails = fShow; }

private:
    class Editing;

    bool Prepare(Integer nPosCode, const std::string& sCurrSeq, Integer nMaxLength);

    Platform m_platform;
    QXKeyboardLayoutData* m_layout = nullptr;
    QXKeyboardAccess* m_keyboard = nullptr;
    const QXProgSettings* m_preferences = nullptr;
    ButtonCaption m_buttonOK, m_buttonCancel, m_buttonCleanLast, m_buttonCleanAll;
    std::string m_sequenceCaption, m_editorCaption, m_sizeMessage, m_showDetails;
    bool m_doShowDetails = false;
    bool m_isOpen = false; // the form has the shared services
    frmSequencer m_form;
};

} // namespace qx
