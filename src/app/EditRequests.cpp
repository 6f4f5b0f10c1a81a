#include "app/EditRequests.h"

#include "app/EditorTexts.h"
#include "app/Failure.h"
#include "app/Workbench.h"
#include "host/KeptCodes.h"
#include "qxcontrols/pos/POSModuleBlock.h"
#include <QStringList>

#include <utility>

namespace qx::app {

EditRequests::EditRequests(Workbench& workbench, const Platform& platform, Screen screen)
    : m_workbench(workbench), m_screen(std::move(screen)), m_sequencer(platform),
      m_posProgrammer(platform) {
    workbench.Faces().AnswerWith(*this);
    AnswerEditors();
}

void EditRequests::AnswerEditors() {
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
        m_screen.help(
            tr("Click keys on the screen or press them on the keyboard: each is added to the "
               "sequence. A click records the key and its release; Shift, Ctrl and Alt are held "
               "for the next click. Text to type becomes the keys that type it. The cross on a "
               "key of the sequence removes it, and dragging moves it. Or type the sequence as "
               "text, such as Ctrl+C Enter ^Enter, and apply it."));
    });
    On(m_posProgrammer.UserNeedsHelp, [this] {
        m_screen.help(
            tr("Click a free key to start a block, then click keys to add or remove them. "
               "All keys of a block send its sequence. A key is in at most one block."));
    });
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
                        Long lMaxLength) {
    if (!m_workbench.IsConnected()) {
        m_screen.report(
            tr("Connect a keyboard first, or the simulated one: the editor works with its "
               "keys."));
        return false;
    }
    bool isEdited = false;
    try {
        m_workbench.Session().Run(host::Error(host::Cause::KeysNotAsked), [&] {
            isEdited = m_sequencer.ShowSequenceEditor(nPosCode, sCurrSeq, sNewSeq,
                                                      static_cast<Integer>(lMaxLength));
        });
    } catch (const host::Error& error) {
        m_screen.report(
            FailureOf(tr("The keyboard reported a failure to the editor."), error).text);
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
    m_screen.report(tr("These codes were left out, because no keyboard can store them: %1")
                        .arg(codes.join(QLatin1String(", "))));
}

bool EditRequests::EditBlocks(POSKeyboard& blocks) {
    return m_posProgrammer.ShowPosProgrammer(blocks);
}

void EditRequests::AnswerAdvanceEdit(Event<bool&>& event) {
    On(event, [this](bool& fEdit) { fEdit = m_workbench.Preferences().AdvancedEditor() != 0; });
}

} // namespace qx::app
