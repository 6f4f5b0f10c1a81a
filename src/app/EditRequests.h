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
class QXBarcode;
class QXFreeProgKeys;
class QXLayeredFuncKeys;
class QXMagnetCard;
class QXPos;
} // namespace qx

namespace qx::app {

class Workbench;

class EditRequests {
    Q_DECLARE_TR_FUNCTIONS(EditRequests)
public:
    struct Screen {
        std::function<bool(const QString& question)> ask; // true: go on
        std::function<void(const QString& text)> tell;    // briefly, without a box
        std::function<void(const QString& text)> help;    // before an editor
    };

    // The workbench outlives this object.
    EditRequests(Workbench& workbench, const Platform& platform, Screen screen);

    // Hands the keyboard and the preferences on to the editors, as they are now.
    void Reload();

private:
    static constexpr Integer kNoKey = -1;

    // The new sequence in sNewSeq unless the user cancels.
    [[nodiscard]] bool Edit(Integer nPosCode, const std::string& sCurrSeq, std::string& sNewSeq,
                            Integer nMaxLength);
    // Takes codes that no keyboard can store out of a recorded sequence, with a notice.
    void KeepCodes(std::string& sSequence);
    // Whether the keyboard has the track; the user is told when it does not.
    [[nodiscard]] bool HasTrack(const QXMagnetCard& control, Integer nTrackId);
    void AnswerAdvanceEdit(Event<bool&>& event);
    void Answer(QXMagnetCard& control);
    void Answer(QXBarcode& control);
    void Answer(QXFreeProgKeys& control);
    void Answer(QXLayeredFuncKeys& control);
    void Answer(QXPos& control);
    template <typename EventType, typename Handler>
    void On(EventType& event, Handler handler) {
        m_subscriptions.push_back(event.Subscribe(std::move(handler)));
    }

    Workbench& m_workbench;
    Screen m_screen;
    QXSequencer m_sequencer;
    QXPOSProgrammer m_posProgrammer;
    std::vector<Subscription> m_subscriptions;
};

} // namespace qx::app
