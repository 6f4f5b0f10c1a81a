#include "app/ControlTexts.h"

#include "host/Configuration.h"
#include "qxcontrols/device/QXCommonKeyboard.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/keys/QXSequencer.h"
#include "qxcontrols/pos/QXPOSProgrammer.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"

#include <QCoreApplication>

#include <array>

namespace qx::app {

namespace {

constexpr const char* kContext = "ControlTexts";

std::string Text(const char* text) {
    return QCoreApplication::translate(kContext, text).toStdString();
}

ButtonCaption ButtonText(const char* caption, const char* toolTip) {
    return {Text(caption), Text(toolTip)};
}

struct TitledSection {
    std::string_view key;
    const char* title;
};

constexpr TitledSection kSections[] = {
    {"commonKeyboard", QT_TRANSLATE_NOOP("ControlTexts", "Keyboard")},
    {"magnetCard", QT_TRANSLATE_NOOP("ControlTexts", "Magnetic card reader")},
    {"barcode", QT_TRANSLATE_NOOP("ControlTexts", "Barcode reader")},
    {"freeProgKeys", QT_TRANSLATE_NOOP("ControlTexts", "Free keys")},
    {"funcKeys4610", QT_TRANSLATE_NOOP("ControlTexts", "Function keys 4610")},
    {"funcKeys4620", QT_TRANSLATE_NOOP("ControlTexts", "Function keys 4620")},
    {"funcKeys4630", QT_TRANSLATE_NOOP("ControlTexts", "Function keys 4630")},
    {"layeredFuncKeys", QT_TRANSLATE_NOOP("ControlTexts", "Layered function keys")},
    {"pos", QT_TRANSLATE_NOOP("ControlTexts", "POS keys")},
};

// How many options of each page are in use; the first of a symbology switches it on.
struct PageTexts {
    BarcodePage page;
    const char* name;
    Integer options;
};

constexpr PageTexts kPages[] = {
    {BP_CommonSettings, QT_TRANSLATE_NOOP("ControlTexts", "Common settings"), 5},
    {BP_EAN, "EAN", 6},
    {BP_UPC, "UPC", 10},
    {BP_Code39, "Code 39", 7},
    {BP_Code128, "Code 128", 5},
    {BP_CodaBar, "Codabar", 4},
    {BP_Code25_Overlapped, QT_TRANSLATE_NOOP("ControlTexts", "Code 25 overlapped"), 4},
    {BP_Code25_Industrial, QT_TRANSLATE_NOOP("ControlTexts", "Code 25 industrial"), 3},
    {BP_Code25_Matrix, QT_TRANSLATE_NOOP("ControlTexts", "Code 25 matrix"), 1},
    {BP_Code93, "Code 93", 1},
    {BP_Code11, "Code 11", 2},
    {BP_Code16K, "Code 16K", 3},
    {BP_MSI, "MSI", 1},
    {BP_Plessey, "Plessey", 1},
};
constexpr const char* kReaders[] = {
    QT_TRANSLATE_NOOP("ControlTexts", "Reader 1"),
    QT_TRANSLATE_NOOP("ControlTexts", "Reader 2"),
};

void Translate(QXCommonKeyboard& control) {
    control.SetCaptionOutputDelay(
        Text(QT_TRANSLATE_NOOP("ControlTexts", "Pause between two characters (output delay)")));
}

void Translate(QXMagnetCard& control) {
    MagneticCaptions& captions = control.Captions();
    captions.SetTracks(Text(QT_TRANSLATE_NOOP("ControlTexts", "Tracks")));
    captions.SetCommonPrefs(Text(QT_TRANSLATE_NOOP("ControlTexts", "All tracks")));
    captions.SetTrackPreferences(Text(QT_TRANSLATE_NOOP("ControlTexts", "This track")));
    captions.SetHeaderAndTerminator(
        Text(QT_TRANSLATE_NOOP("ControlTexts", "Keys sent before and after the track's data")));
    captions.SetUseThisTrack(Text(QT_TRANSLATE_NOOP("ControlTexts", "Read this track")));
    captions.SetUseThisHeader(Text(QT_TRANSLATE_NOOP("ControlTexts", "Send header")));
    captions.SetUseThisTerminator(Text(QT_TRANSLATE_NOOP("ControlTexts", "Send terminator")));
    captions.SetCreateHeader(ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Edit…"),
                                        QT_TRANSLATE_NOOP("ControlTexts", "Edit the header")));
    captions.SetRemoveHeader(ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Remove"),
                                        QT_TRANSLATE_NOOP("ControlTexts", "Remove the header")));
    captions.SetCreateTerminator(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Edit…"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Edit the terminator")));
    captions.SetRemoveTerminator(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Remove"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Remove the terminator")));
    control.ReaderOptions().VerifyLRC().SetCaption(
        Text(QT_TRANSLATE_NOOP("ControlTexts", "Verify checksum (LRC)")));
    control.ReaderOptions().VerifyLastChar().SetCaption(
        Text(QT_TRANSLATE_NOOP("ControlTexts", "Verify last character")));
    control.ReaderOptions().SendImmediate().SetCaption(
        Text(QT_TRANSLATE_NOOP("ControlTexts", "Send each track as soon as it is read")));
    for (Integer track = 1; track <= 4; ++track)
        control.Track(track).SetCaption(
            QCoreApplication::translate("ControlTexts", "Track %1").arg(track).toStdString());
    control.SetShowDetails(Text(QT_TRANSLATE_NOOP("ControlTexts", "Show released keys")));
    control.RescanTracks();
}

void Translate(QXBarcode& control) {
    for (const PageTexts& texts : kPages) {
        BarcodeOptionPage& page = control.BitPage(texts.page);
        page.SetOptionNum(texts.options);
        for (Integer option = 0; option < texts.options; ++option) {
            QString caption = QCoreApplication::translate("ControlTexts", "Option %1").arg(option);
            if (!HasBarcodeConfigBit(texts.page, option))
                caption =
                    QCoreApplication::translate("ControlTexts", "%1 (not kept by the keyboard)")
                        .arg(caption);
            else if (option == 0 && texts.page != BP_CommonSettings)
                caption = QCoreApplication::translate("ControlTexts", "Read this kind of code");
            page.Flag(option).SetCaption(caption.toStdString());
        }
        control.SetListEntry(texts.page, Text(texts.name));
    }
    control.SetListEntry(BP_Reader_1, Text(kReaders[0]));
    control.SetListEntry(BP_Reader_2, Text(kReaders[1]));
    control.SetListCaption(Text(QT_TRANSLATE_NOOP("ControlTexts", "Codes and readers")));
    const std::string hint =
        Text(QT_TRANSLATE_NOOP("ControlTexts", "Keys sent before and after each code of %1"));
    control.SetReader1Msg(QString::fromStdString(hint)
                              .arg(QCoreApplication::translate(kContext, kReaders[0]))
                              .toStdString());
    control.SetReader2Msg(QString::fromStdString(hint)
                              .arg(QCoreApplication::translate(kContext, kReaders[1]))
                              .toStdString());
    control.SetMinSizeCaption(Text(QT_TRANSLATE_NOOP("ControlTexts", "Shortest code")));
    control.SetMaxSizeCaption(Text(QT_TRANSLATE_NOOP("ControlTexts", "Longest code")));
    control.OptionHeader().SetCaption(Text(QT_TRANSLATE_NOOP("ControlTexts", "Send header")));
    control.OptionTerminator().SetCaption(
        Text(QT_TRANSLATE_NOOP("ControlTexts", "Send terminator")));
    control.SetButtonEdit(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Edit…"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Edit this sequence of keys")));
    control.SetButtonRemove(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Remove"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Remove this sequence of keys")));
    control.SetShowDetails(Text(QT_TRANSLATE_NOOP("ControlTexts", "Show released keys")));
}

void Translate(QXFreeProgKeys& control) {
    control.SetButtonEdit(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Edit…"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Edit the current key's sequence")));
    control.SetButtonClean(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Clear key"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Remove the current key's sequence")));
    control.SetButtonCleanAll(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Clear all keys…"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Remove the sequences of all keys")));
    control.SetSequenceForCurrKey(Text(QT_TRANSLATE_NOOP("ControlTexts", "The key sends:")));
    control.SetShowDetails(Text(QT_TRANSLATE_NOOP("ControlTexts", "Show released keys")));
}

void Translate(QXLayeredFuncKeys& control) {
    control.SetButtonEdit(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Edit…"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Edit the current key's sequence")));
    control.SetButtonCleanKey(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Clear key"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Remove the current key's sequence")));
    control.SetButtonCleanLayer(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Clear layer…"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Remove the sequences of this layer")));
    control.SetButtonCleanAllLayer(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Clear all layers…"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Remove the sequences of all layers")));
    control.SetButtonLayerInc(ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Next layer"),
                                         QT_TRANSLATE_NOOP("ControlTexts", "Show the next layer")));
    control.SetButtonLayerDec(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Previous layer"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Show the previous layer")));
    control.SetCaptionSequence(Text(QT_TRANSLATE_NOOP("ControlTexts", "The key sends:")));
    control.SetFunctionKeyDescription(
        Text(QT_TRANSLATE_NOOP("ControlTexts", "Description of the key")));
    control.SetLayerDesc(Text(QT_TRANSLATE_NOOP("ControlTexts", "Layer")));
    control.SetShowDetails(Text(QT_TRANSLATE_NOOP("ControlTexts", "Show released keys")));
}

void Translate(QXPos& control) {
    control.SetNumBlocksCaption(Text(QT_TRANSLATE_NOOP("ControlTexts", "Blocks:")));
    control.SetButtonEdit(ButtonText(
        QT_TRANSLATE_NOOP("ControlTexts", "Edit blocks…"),
        QT_TRANSLATE_NOOP("ControlTexts", "Group keys into blocks that send one sequence")));
    control.SetButtonCleanAll(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Clear all blocks…"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Remove all blocks and their sequences")));
}

template <typename Control>
void TranslateIf(ModuleControl& control) {
    if (auto* found = dynamic_cast<Control*>(&control))
        Translate(*found);
}

template <typename... Controls>
void TranslateAs(ModuleControl& control) {
    (TranslateIf<Controls>(control), ...);
}

} // namespace

void TranslateControls(host::Configuration& configuration) {
    for (const auto& section : configuration.Sections()) {
        ModuleControl& control = section->Control();
        TranslateAs<QXCommonKeyboard, QXMagnetCard, QXBarcode, QXFreeProgKeys, QXLayeredFuncKeys,
                    QXPos>(control);
        control.Translate();
        control.AdjustControls();
    }
}

void TranslateEditors(QXSequencer& sequencer, QXPOSProgrammer& posProgrammer) {
    sequencer.SetButtonOK(ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "OK"), ""));
    sequencer.SetButtonCancel(ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Cancel"), ""));
    sequencer.SetButtonCleanLast(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Remove last"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Remove the last key code")));
    sequencer.SetButtonCleanAll(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Remove all"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Remove all key codes")));
    sequencer.SetSequenceCaption(Text(QT_TRANSLATE_NOOP("ControlTexts", "Sequence")));
    sequencer.SetEditorCaption(Text(QT_TRANSLATE_NOOP("ControlTexts", "Edit a sequence of keys")));
    sequencer.SetSequenceSizeMessage(
        Text(QT_TRANSLATE_NOOP("ControlTexts", "The sequence is full.")));
    sequencer.SetShowDetails(Text(QT_TRANSLATE_NOOP("ControlTexts", "Show released keys")));
    sequencer.Translate();

    posProgrammer.SetButtonOK(sequencer.ButtonOK());
    posProgrammer.SetButtonCancel(sequencer.ButtonCancel());
    posProgrammer.SetButtonNewBlock(ButtonText(
        QT_TRANSLATE_NOOP("ControlTexts", "New block"),
        QT_TRANSLATE_NOOP("ControlTexts", "The next free key that you click begins it")));
    posProgrammer.SetButtonEdit(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Edit…"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Edit the sequence of this block")));
    posProgrammer.SetButtonClean(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Remove block"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Remove this block and its sequence")));
    posProgrammer.SetButtonCleanAll(
        ButtonText(QT_TRANSLATE_NOOP("ControlTexts", "Remove all blocks…"),
                   QT_TRANSLATE_NOOP("ControlTexts", "Remove all blocks and their sequences")));
    posProgrammer.SetProgrammerCaption(Text(QT_TRANSLATE_NOOP("ControlTexts", "POS blocks")));
    posProgrammer.SetNumBlocksCaption(Text(QT_TRANSLATE_NOOP("ControlTexts", "Blocks:")));
    posProgrammer.SetBlockIDCaption(Text(QT_TRANSLATE_NOOP("ControlTexts", "Number")));
    posProgrammer.SetKeysCaption(Text(QT_TRANSLATE_NOOP("ControlTexts", "Keys")));
    posProgrammer.SetColorCaption(Text(QT_TRANSLATE_NOOP("ControlTexts", "Colour")));
    posProgrammer.SetSequenceCaption(Text(QT_TRANSLATE_NOOP("ControlTexts", "Each key sends")));
    posProgrammer.Translate();
}

QString SectionTitle(std::string_view sectionKey) {
    for (const TitledSection& section : kSections)
        if (section.key == sectionKey)
            return QCoreApplication::translate(kContext, section.title);
    return {};
}

} // namespace qx::app
