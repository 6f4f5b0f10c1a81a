#include "app/EditRequests.h"

#include "app/ControlTexts.h"
#include "app/Failure.h"
#include "app/Workbench.h"
#include "host/KeptCodes.h"
#include "qxcontrols/keyprog/FreeProgKeysBlock.h"
#include "qxcontrols/keyprog/LayeredFuncKeyBlocks.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/pos/POSModuleBlock.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"
#include "qxcontrols/readers/TrackSlots.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace qx::app {

namespace {

constexpr auto kTrackSequence = static_cast<Integer>(kTrackSlotSize);
constexpr auto kFreeKeySequence = static_cast<Integer>(kFreeProgKeySlotSize);
constexpr auto kFuncKeySequence = static_cast<Integer>(kFuncKeySlotSize);

} // namespace

EditRequests::EditRequests(Workbench& workbench, const Platform& platform, Screen screen)
    : m_workbench(workbench), m_screen(std::move(screen)), m_sequencer(platform),
      m_posProgrammer(platform) {
    Answer(workbench.ControlOf<QXMagnetCard>("magnetCard"));
    Answer(workbench.ControlOf<QXBarcode>("barcode"));
    for (const char* key : {"freeProgKeys", "funcKeys4610", "funcKeys4620", "funcKeys4630"})
        Answer(workbench.ControlOf<QXFreeProgKeys>(key));
    Answer(workbench.ControlOf<QXLayeredFuncKeys>("layeredFuncKeys"));
    Answer(workbench.ControlOf<QXPos>("pos"));
    On(m_posProgrammer.EditSequence,
       [this](Integer nPosCode, const std::string& sCurrSeq, bool& fCancel, std::string& sNewSeq) {
           fCancel = !Edit(nPosCode, sCurrSeq, sNewSeq, kPOSSequenceSize);
       });
    On(m_posProgrammer.RemoveBlock, [this](Integer nBlockID, bool& fCancel) {
        fCancel =
            !m_screen.ask(tr("Remove block %1 and the sequence that its keys send?").arg(nBlockID));
    });
    On(m_posProgrammer.RemoveAllBlocks,
       [this](bool& fCancel) { fCancel = !m_screen.ask(tr("Remove all POS blocks?")); });
    On(m_sequencer.UserNeedsHelp, [this] {
        m_screen.help(tr("Click keys on the screen or press them on the keyboard: each is added to "
                         "the sequence. A press on the screen records the key and its release. Or "
                         "type the sequence as text, such as Ctrl+C Enter, and apply it."));
    });
    On(m_posProgrammer.UserNeedsHelp, [this] {
        m_screen.help(tr("Click a free key to begin a block, then keys to take into it or out of "
                         "it. All keys of a block send its sequence. A key is in one block at "
                         "most."));
    });
    Reload();
}

void EditRequests::Reload() {
    m_sequencer.SetLayoutSource(&m_workbench.Layout());
    m_sequencer.SetPrefSource(&m_workbench.Preferences());
    m_sequencer.SetKeyboard(m_workbench.IsConnected() ? &m_workbench.Session().Access() : nullptr);
    m_sequencer.SetDoShowDetails(m_workbench.Preferences().ShowUpcodes());
    m_sequencer.SetKeyFontSize(m_workbench.Preferences().KeyFontSize());
    m_posProgrammer.SetLayoutSource(&m_workbench.Layout());
    m_posProgrammer.SetPrefSource(&m_workbench.Preferences());
    TranslateEditors(m_sequencer, m_posProgrammer);
}

bool EditRequests::Edit(Integer nPosCode, const std::string& sCurrSeq, std::string& sNewSeq,
                        Integer nMaxLength) {
    if (!m_workbench.IsConnected()) {
        m_screen.tell(
            tr("Connect a keyboard first, or the simulated one: the editor works with its "
               "keys."));
        return false;
    }
    bool isEdited = false;
    try {
        m_workbench.Session().Run(host::Error(host::Cause::KeysNotAsked), [&] {
            isEdited = m_sequencer.ShowSequenceEditor(nPosCode, sCurrSeq, sNewSeq, nMaxLength);
        });
    } catch (const host::Error& error) {
        m_screen.tell(FailureOf(tr("The keyboard reported a failure to the editor."), error).text);
    }
    if (isEdited)
        KeepCodes(sNewSeq);
    return isEdited;
}

void EditRequests::KeepCodes(std::string& sSequence) {
    constexpr std::size_t kMostNamed = 5;
    host::KeptCodes kept = host::KeepCodes(sSequence);
    sSequence = std::move(kept.keyString);
    if (kept.leftOut.empty())
        return;
    QStringList codes;
    for (const Integer code : kept.leftOut)
        codes.append(QString::number(code));
    if (kept.leftOut.size() > kMostNamed)
        codes = codes.first(kMostNamed) << QStringLiteral("…");
    m_screen.tell(tr("Left out, because no keyboard can store them: the codes %1")
                      .arg(codes.join(QLatin1String(", "))));
}

bool EditRequests::HasTrack(const QXMagnetCard& control, Integer nTrackId) {
    const bool isThere = control.Track(nTrackId).Available();
    if (!isThere)
        m_screen.tell(tr("This keyboard cannot read track %1.").arg(nTrackId));
    return isThere;
}

// A key pressed on a sequence's label opens the editor for those who prefer it.
void EditRequests::AnswerAdvanceEdit(Event<bool&>& event) {
    On(event, [this](bool& fEdit) { fEdit = m_workbench.Preferences().AdvancedEditor() != 0; });
}

void EditRequests::Answer(QXMagnetCard& control) {
    const auto edit = [this, &control](Integer nTrackId, const std::string& sCurrSeq, bool& fCancel,
                                       std::string& sNewSeq) {
        fCancel = !HasTrack(control, nTrackId) || !Edit(kNoKey, sCurrSeq, sNewSeq, kTrackSequence);
    };
    const auto clear = [this, &control](Integer nTrackId, bool& fCanRemoveIt) {
        fCanRemoveIt = HasTrack(control, nTrackId);
    };
    On(control.EditCurrentHeader, edit);
    On(control.EditCurrentTerminator, edit);
    On(control.ClearCurrentHeader, clear);
    On(control.ClearCurrentTerminator, clear);
    AnswerAdvanceEdit(control.AdvanceEdit);
}

void EditRequests::Answer(QXBarcode& control) {
    On(control.EditHeader,
       [this](const std::string& sCurrSeq, bool& fCancel, std::string& sNewSeq) {
           fCancel = !Edit(kNoKey, sCurrSeq, sNewSeq, kTrackSequence);
       });
    On(control.RemoveHeader, [](bool& fRemoveIt) { fRemoveIt = true; });
    On(control.RemoveTerminator, [](bool& fRemoveIt) { fRemoveIt = true; });
    AnswerAdvanceEdit(control.AdvanceEdit);
}

void EditRequests::Answer(QXFreeProgKeys& control) {
    On(control.EditSequence, [this, &control](Integer nPosCode, const std::string& sCurrSeq,
                                              bool& fCancel, std::string& sNewSeq) {
        const auto stored = StoredFreeProgKeys(control.Sequences(), control.ConfigID());
        const bool hasPlace = std::find(stored.begin(), stored.end(), nPosCode) != stored.end();
        if (!hasPlace)
            m_screen.tell(tr("This module has no place for this key in the keyboard."));
        fCancel = !hasPlace || !Edit(nPosCode, sCurrSeq, sNewSeq, kFreeKeySequence);
    });
    On(control.KeyNoEditable, [this](Integer nPositionCode) {
        m_screen.tell(nPositionCode == kNoKey ? tr("Pick a key first.")
                                              : tr("This key cannot be programmed."));
    });
    On(control.RemoveAllSequences,
       [this](bool& fRemoveIt) { fRemoveIt = m_screen.ask(tr("Clear all keys of this module?")); });
    AnswerAdvanceEdit(control.AdvanceEdit);
}

void EditRequests::Answer(QXLayeredFuncKeys& control) {
    On(control.EditLayeredFuncKey,
       [this](const std::string& sCurrSeq, bool& fCancel, std::string& sNewSeq) {
           fCancel = !Edit(kNoKey, sCurrSeq, sNewSeq, kFuncKeySequence);
       });
    On(control.NoKeySelectedToEdit, [this] { m_screen.tell(tr("Pick a key first.")); });
    On(control.NoKeySelectedToClean, [this] { m_screen.tell(tr("Pick a key first.")); });
    On(control.CleanThisLayer, [this, &control](bool& fCancel) {
        fCancel = !m_screen.ask(tr("Clear all keys of layer %1?").arg(control.CurrentLayer()));
    });
    On(control.CleanAllLayers,
       [this](bool& fCancel) { fCancel = !m_screen.ask(tr("Clear all keys of all layers?")); });
    AnswerAdvanceEdit(control.AdvanceEdit);
}

void EditRequests::Answer(QXPos& control) {
    On(control.POSEditorRequested, [this, &control](bool& fCancel) {
        fCancel = !m_posProgrammer.ShowPosProgrammer(control.PosData());
    });
    On(control.RemoveAllBlocks,
       [this](bool& fCancel) { fCancel = !m_screen.ask(tr("Remove all POS blocks?")); });
}

} // namespace qx::app
