// NoticeBar: a line below the page that reports events.
//
// A message stays until the user begins another action and that has an effect. Further messages of
// the same action are added below it, but a failure does not follow a success, and one success does
// not follow another. A long text scrolls, details are shown on request, and buttons offer what can
// be done about it.
#pragma once

#include <QFrame>
#include <QString>

#include <functional>
#include <vector>

class QBoxLayout;
class QHBoxLayout;
class QLabel;
class QToolButton;

namespace qx::app {

struct Notice {
    enum class Kind { Information, Success, Warning, Failure }; // in order of severity
    struct Offer {
        QString text; // of a button
        std::function<void()> accept;
    };

    Kind kind = Kind::Information;
    QString text;
    QString details = {};
    std::vector<Offer> offers = {};
    std::function<bool()> isValid =
        {}; // if set: whether it is true, and its offers can be accepted
};

class NoticeBar : public QFrame {
    Q_OBJECT
public:
    explicit NoticeBar(QWidget* parent = nullptr);

    void Show(const Notice& notice);
    // The user has begun another action, or the program waits for one (an accessibility tool can
    // begin one without any input event).
    void Age() { m_isOld = true; }
    // Hides the messages from before that action, and those that no longer apply.
    void ClearOld();

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Clear();
    void AddOffer(const Notice::Offer& offer);
    void NameButtons();
    void PlaceButtons(); // beside the text if that leaves it enough room, otherwise below it

    QLabel* m_icon;
    QLabel* m_text;
    QBoxLayout* m_body; // the text and the buttons
    QWidget* m_buttons; // the offers and the fold
    QHBoxLayout* m_offers;
    QToolButton* m_fold; // of the details
    QToolButton* m_close;
    QLabel* m_details; // below the text
    Notice::Kind m_kind = Notice::Kind::Information;
    bool m_isOld = true;
    std::function<bool()> m_isValid; // see Notice
};

} // namespace qx::app
