// NoticeBar: a line above the page that reports what has happened.
//
// A message stays until the user has begun something else and that has had an effect. What is
// reported before that stands below it.
#pragma once

#include <QFrame>

class QLabel;
class QToolButton;

namespace qx::app {

class NoticeBar : public QFrame {
    Q_OBJECT
public:
    enum class Kind { Information, Success, Warning }; // the graver the later

    // With the object name of its text.
    explicit NoticeBar(const QString& textName, QWidget* parent = nullptr);

    void Tell(Kind kind, const QString& text);
    // The user has begun something else.
    void Age() { m_isOld = true; }
    // Hides what was reported before that.
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
