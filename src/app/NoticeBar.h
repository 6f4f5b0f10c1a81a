// NoticeBar: a line above the page that reports events.
//
// A message stays until the user begins another action and that has an effect. Further messages
// before that are added below it.
#pragma once

#include <QFrame>

class QLabel;
class QToolButton;

namespace qx::app {

class NoticeBar : public QFrame {
    Q_OBJECT
public:
    enum class Kind { Information, Success, Warning }; // in order of severity

    // `textName` is the object name of the bar's text.
    explicit NoticeBar(const QString& textName, QWidget* parent = nullptr);

    void Tell(Kind kind, const QString& text);
    // The user has begun another action.
    void Age() { m_isOld = true; }
    // Hides the messages from before that action.
    void ClearOld();
    // For a bar that only the program closes.
    void HideButton();

protected:
    void changeEvent(QEvent* event) override;

private:
    void NameButton();

    QLabel* m_icon;
    QLabel* m_text;
    QToolButton* m_close;
    Kind m_kind = Kind::Information;
    bool m_isOld = true;
};

} // namespace qx::app
