// Help: a page of help for each page of the window and for the dialogs that need one, in the
// present language, and a description of each setting.
#pragma once

#include <QDialog>

class QTextBrowser;
class QUrl;

namespace qx::app {

// Of the page or dialog with this id, below docs/help; invalid for an unknown page.
[[nodiscard]] QUrl HelpOn(const QString& page);

class HelpWindow : public QDialog {
    Q_OBJECT
public:
    explicit HelpWindow(QWidget* parent);
    void ShowPage(const QString& page);

protected:
    void changeEvent(QEvent* event) override; // another language, other colours

private:
    void ShowText(const QString& page);

    QTextBrowser* m_text;
};

// Has F1 show this page of help beside a dialog that blocks the window.
void OfferHelp(QDialog& dialog, const QString& page);

// Gives each setting in the widget its description, for "What's this?" (Shift+F1).
void DescribeSettings(QWidget& page);

} // namespace qx::app
