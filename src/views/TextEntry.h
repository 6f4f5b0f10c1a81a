// TextEntry: a line for text that is to become the keys that type it, and buttons to add them, with
// or without Enter.
#pragma once

#include <QWidget>

class QBoxLayout;
class QPushButton;

namespace qx::views {

class EntryLine;

class TextEntry : public QWidget {
    Q_OBJECT
public:
    // The line has the focus of this widget.
    explicit TextEntry(QWidget* parent = nullptr);

    // The buttons beside the line, or below it.
    void SetWide(bool isWide);
    [[nodiscard]] QString Text() const;
    void Insert(const QString& text); // at the cursor
    void Empty();

signals:
    // The user asks to add the keys of this text, or leaves the line; call Empty once they are
    // added.
    void Entered(const QString& text, bool withEnter);

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override; // of the line

private:
    void ShowTexts();

    QBoxLayout* m_column;
    EntryLine* m_line;
    QPushButton* m_add;
    QPushButton* m_addEnter;
};

} // namespace qx::views
