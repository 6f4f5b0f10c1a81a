// QXPOSProgrammer: opens the window in which the user edits the blocks of the POS keys.
//
// A host creates one, passes it the shared services, and calls ShowPosProgrammer when QXPos
// requests the programmer. The host shows the form itself, through Platform::modalForms.
#pragma once

#include "qxcontrols/common/ButtonCaption.h"
#include "qxcontrols/common/Event.h"
#include "qxcontrols/platform/Platform.h"
#include "qxcontrols/pos/frmPOSProgrammer.h"

#include <string>
#include <utility>

namespace qx {

class QXPOSProgrammer {
public:
    explicit QXPOSProgrammer(const Platform& platform = {});
    ~QXPOSProgrammer();
    QXPOSProgrammer(const QXPOSProgrammer&) = delete;
    QXPOSProgrammer& operator=(const QXPOSProgrammer&) = delete;

    // The user asks for help.
    Event<> UserNeedsHelp;
    // nPosCode of the block's major key, sOutSeq, fCancelEdit, sInSeq. Preset to True and to the
    // current sequence: without an answer nothing changes. A sequence longer than kPOSSequenceSize
    // is cut to its first codes.
    Event<Integer, const std::string&, bool&, std::string&> EditSequence;
    // A block with a sequence, or all blocks, would be lost. The flags are preset to True: without
    // an answer nothing is removed.
    Event<Integer, bool&> RemoveBlock; // nBlockID, fCancelRemoving
    Event<bool&> RemoveAllBlocks;      // fCancelRemoving

    // The shared services, which must outlive this object. Null clears.
    void SetLayoutSource(QXKeyboardLayoutData* layout) { m_layout = layout; }
    void SetPrefSource(const QXProgSettings* preferences) { m_preferences = preferences; }

    // Lets the user edit the blocks. True if the user left with OK; oPosData then has the edited
    // blocks, otherwise it is unchanged. Nothing is shown while the window is already open.
    bool ShowPosProgrammer(POSKeyboard& oPosData);

    // Pass texts and colours on to the form.
    void Translate();
    void ReloadColor();

    // The form's texts.
    [[nodiscard]] ButtonCaption& ButtonOK() { return m_buttonOK; }
    void SetButtonOK(const ButtonCaption& caption) { m_buttonOK = caption; }
    [[nodiscard]] ButtonCaption& ButtonCancel() { return m_buttonCancel; }
    void SetButtonCancel(const ButtonCaption& caption) { m_buttonCancel = caption; }
    [[nodiscard]] ButtonCaption& ButtonNewBlock() { return m_buttonNewBlock; }
    void SetButtonNewBlock(const ButtonCaption& caption) { m_buttonNewBlock = caption; }
    [[nodiscard]] ButtonCaption& ButtonEdit() { return m_buttonEdit; }
    void SetButtonEdit(const ButtonCaption& caption) { m_buttonEdit = caption; }
    [[nodiscard]] ButtonCaption& ButtonClean() { return m_buttonClean; }
    void SetButtonClean(const ButtonCaption& caption) { m_buttonClean = caption; }
    [[nodiscard]] ButtonCaption& ButtonCleanAll() { return m_buttonCleanAll; }
    void SetButtonCleanAll(const ButtonCaption& caption) { m_buttonCleanAll = caption; }
    [[nodiscard]] const std::string& ProgrammerCaption() const { return m_programmerCaption; }
    void SetProgrammerCaption(std::string sText) { m_programmerCaption = std::move(sText); }
    [[nodiscard]] const std::string& NumBlocksCaption() const { return m_numBlocksCaption; }
    void SetNumBlocksCaption(std::string sText) { m_numBlocksCaption = std::move(sText); }
    [[nodiscard]] const std::string& BlockIDCaption() const { return m_blockIdCaption; }
    void SetBlockIDCaption(std::string sText) { m_blockIdCaption = std::move(sText); }
    [[nodiscard]] const std::string& KeysCaption() const { return m_keysCaption; }
    void SetKeysCaption(std::string sText) { m_keysCaption = std::move(sText); }
    [[nodiscard]] const std::string& ColorCaption() const { return m_colorCaption; }
    void SetColorCaption(std::string sText) { m_colorCaption = std::move(sText); }
    [[nodiscard]] const std::string& SequenceCaption() const { return m_sequenceCaption; }
    void SetSequenceCaption(std::string sText) { m_sequenceCaption = std::move(sText); }

private:
    class Editing;

    Platform m_platform;
    QXKeyboardLayoutData* m_layout = nullptr;
    const QXProgSettings* m_preferences = nullptr;
    ButtonCaption m_buttonOK, m_buttonCancel, m_buttonNewBlock, m_buttonEdit;
    ButtonCaption m_buttonClean, m_buttonCleanAll;
    std::string m_programmerCaption, m_numBlocksCaption, m_blockIdCaption;
    std::string m_keysCaption, m_colorCaption, m_sequenceCaption;
    bool m_isOpen = false; // the form has the shared objects
    frmPOSProgrammer m_form;
};

} // namespace qx
