// Help: a page of help for each page of the window, in the present language, and a description of
// each setting.
#pragma once

#include <QDialog>

class QTextBrowser;
class QUrl;

namespace qx::app {

// Of the page with this id, below docs/help; invalid for an unknown page.
[[nodiscard]] QUrl HelpOn(const QString& page);

class HelpWindow : public QDialog {
    Q_OBJECT
public:
    explicit HelpWindow(QWidget* parent);
    void ShowPage(const QString& page);

private:
    QTextBrowser* m_text;
};

// Gives each setting in the widget its description, for "What's this?" (Shift+F1).
void DescribeSettings(QWidget& page);

} // namespace qx::app
