// NoticeBar: a line above the page that says what has happened, until it is read.
#pragma once

#include <QFrame>

class QLabel;

namespace qx::app {

class NoticeBar : public QFrame {
    Q_OBJECT
public:
    enum class Kind { Information, Success, Warning };

    explicit NoticeBar(QWidget* parent = nullptr);

    void Tell(Kind kind, const QString& text);
    [[nodiscard]] QString Text() const;

private:
    QLabel* m_icon;
    QLabel* m_text;
};

} // namespace qx::app
