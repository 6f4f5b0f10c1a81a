#include "app/Help.h"

#include <QFile>
#include <QLocale>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace qx::app {

namespace {

constexpr QSize kSize(560, 640); // pixels

} // namespace

// The function keys of other models are programmed as the free keys are.
QUrl HelpOn(const QString& page) {
    const QString name =
        page.startsWith(QLatin1String("funcKeys")) ? QStringLiteral("freeProgKeys") : page;
    const QString path =
        QStringLiteral(":/help/%1/%2.md").arg(QLocale().name().section(u'_', 0, 0), name);
    return QFile::exists(path) ? QUrl(QStringLiteral("qrc") + path) : QUrl();
}

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent), m_text(new QTextBrowser) {
    setObjectName(QStringLiteral("helpWindow"));
    setWindowTitle(tr("Help"));
    setModal(false);
    m_text->setObjectName(QStringLiteral("helpText"));
    m_text->setAccessibleName(tr("Help"));
    m_text->setFrameShape(QFrame::NoFrame);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(m_text);
    resize(kSize);
}

void HelpWindow::ShowPage(const QString& page) {
    m_text->setSource(HelpOn(page), QTextDocument::MarkdownResource);
    show();
    raise();
    activateWindow();
}

} // namespace qx::app
