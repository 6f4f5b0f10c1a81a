// EditRequests: answers the controls when they ask for an edit or a removal.
//
// A control opens no editor: it raises an event. Here every such event is answered by the sequence
// editor, the POS programmer or a question to the user. Emptying many keys is asked about; emptying
// one is not, since it can be undone.
#pragma once

#include "qxcontrols/common/Event.h"
#include "qxcontrols/keys/QXSequencer.h"
#include "qxcontrols/pos/QXPOSProgrammer.h"

#include <QCoreApplication>

#include <functional>
#include <string>
#include <vector>

class QString;

namespace qx {
class POSKeyboard;
}

namespace qx::app {

class Workbench;

class EditRequests {
    Q_DECLARE_TR_FUNCTIONS(EditRequests)
public:
    struct Screen {
        std::function<bool(const QString& question)> ask; // true: go on
        std::function<void(const QString& text)> report;  // briefly, without a box
        std::function<void(const QString& text)> done;    // likewise, what can be undone
        std::function<void(const QString& text)> help;    // before an editor
    };

    // The workbench outlives this object. Reload comes before the first edit.
    EditRequests(Workbench& workbench, const Platform& platform, Screen screen);

    // Hands the keyboard and the preferences on to the editors, as they are now.
    void Reload();

    // For the faces of the sections.
    static constexpr Integer kNoKey = -1;
    // Has the user edit a sequence for a slot of so many codes: the new one in sNewSeq unless the
    // user cancels. Codes that no keyboard can store are taken out of it, with a notice.
    [[nodiscard]] bool Edit(Integer nPosCode, const std::string& sCurrSeq, std::string& sNewSeq,
                            Long lMaxLength);
    // Has the user edit the blocks. Whether they have changed.
    [[nodiscard]] bool EditBlocks(POSKeyboard& blocks);
    [[nodiscard]] bool Ask(const QString& question) const { return m_screen.ask(question); }
    void Report(const QString& text) const { m_screen.report(text); }
    // After an edit, which the user may want to undo.
    void ReportDone(const QString& text) const { m_screen.done(text); }
    // Answers this event as long as this object lives.
    template <typename EventType, typename Handler>
    void On(EventType& event, Handler handler) {
        m_subscriptions.push_back(event.Subscribe(std::move(handler)));
    }
    // A key pressed on a sequence's label opens the editor for those who prefer it.
    void AnswerAdvanceEdit(Event<bool&>& event);

private:
    void AnswerEditors();
    void KeepCodes(std::string& sSequence);

    Workbench& m_workbench;
    Screen m_screen;
    QXSequencer m_sequencer;
    QXPOSProgrammer m_posProgrammer;
    std::vector<Subscription> m_subscriptions;
};

} // namespace qx::app
