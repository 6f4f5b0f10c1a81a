#include "app/EditorTexts.h"

#include "app/SettingWords.h"
#include "app/sections/SectionFace.h"
#include "qxcontrols/keys/QXSequencer.h"
#include "qxcontrols/pos/QXPOSProgrammer.h"

#include <QCoreApplication>

namespace qx::app {

namespace {

struct EditorTexts {
    Q_DECLARE_TR_FUNCTIONS(EditorTexts)
};

} // namespace

void TranslateEditors(QXSequencer& sequencer, QXPOSProgrammer& posProgrammer) {
    sequencer.SetButtonOK(ButtonText(EditorTexts::tr("OK"), {}));
    sequencer.SetButtonCancel(ButtonText(EditorTexts::tr("Cancel"), {}));
    sequencer.SetButtonCleanLast(
        ButtonText(EditorTexts::tr("Remove last"), EditorTexts::tr("Remove the last key code")));
    sequencer.SetButtonCleanAll(
        ButtonText(EditorTexts::tr("Remove all"), EditorTexts::tr("Remove all key codes")));
    sequencer.SetSequenceCaption(EditorTexts::tr("Sequence:").toStdString());
    sequencer.SetEditorCaption(EditorTexts::tr("Edit a sequence of keys").toStdString());
    sequencer.SetSequenceSizeMessage(EditorTexts::tr("The sequence is full.").toStdString());
    sequencer.SetShowDetails(ReleasesText().toStdString());
    sequencer.Translate();

    posProgrammer.SetButtonOK(sequencer.ButtonOK());
    posProgrammer.SetButtonCancel(sequencer.ButtonCancel());
    posProgrammer.SetButtonNewBlock(
        ButtonText(EditorTexts::tr("New block"),
                   EditorTexts::tr("The next free key that you click begins it")));
    posProgrammer.SetButtonEdit(
        ButtonText(EditorTexts::tr("Edit…"), EditorTexts::tr("Edit the sequence of this block")));
    posProgrammer.SetButtonClean(ButtonText(EditorTexts::tr("Remove block"),
                                            EditorTexts::tr("Remove this block and its sequence")));
    posProgrammer.SetButtonCleanAll(ButtonText(
        EditorTexts::tr("Remove all…"), EditorTexts::tr("Remove all blocks and their sequences")));
    posProgrammer.SetProgrammerCaption(EditorTexts::tr("POS blocks").toStdString());
    posProgrammer.SetNumBlocksCaption(EditorTexts::tr("Blocks:").toStdString());
    posProgrammer.SetBlockIDCaption(EditorTexts::tr("Number:").toStdString());
    posProgrammer.SetKeysCaption(EditorTexts::tr("Keys:").toStdString());
    posProgrammer.SetColorCaption(EditorTexts::tr("Colour:").toStdString());
    posProgrammer.SetSequenceCaption(EditorTexts::tr("Each key sends:").toStdString());
    posProgrammer.Translate();
}

} // namespace qx::app
