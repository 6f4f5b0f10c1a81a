#include "app/Help.h"

#include "app/SettingWords.h"

#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLocale>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextTable>
#include <QUrl>
#include <QVBoxLayout>

#include <utility>

namespace qx::app {

namespace {

constexpr QSize kSize(560, 640); // pixels
constexpr int kMargin = 16;
constexpr int kIndent = 20;
constexpr int kAboveHeading = 18; // in place of the text's own gaps
constexpr int kAboveTable = 8;
constexpr int kCellAcross = 8;
constexpr int kCellDown = 5;

// Opens the help beside a dialog.
class HelpKey : public QObject {
public:
    HelpKey(QDialog& dialog, QString page)
        : QObject(&dialog), m_dialog(dialog), m_page(std::move(page)) {}

protected:
    bool eventFilter(QObject* /*dialog*/, QEvent* event) override {
        if (event->type() != QEvent::KeyPress ||
            static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1)
            return false;
        if (m_window == nullptr)
            m_window = new HelpWindow(&m_dialog);
        m_window->ShowPage(m_page);
        return true;
    }

private:
    QDialog& m_dialog;
    QString m_page;
    HelpWindow* m_window = nullptr; // when it is first wanted
};

// Rules between its rows, and no frame.
void ArrangeTable(QTextTable& table, const QPalette& palette) {
    QTextTableFormat format = table.format();
    format.setBorder(0);
    format.setCellSpacing(0);
    format.setTopMargin(kAboveTable);
    table.setFormat(format);
    QColor rule = palette.color(QPalette::Text);
    rule.setAlphaF(0.25F);
    for (int row = 0; row < table.rows(); ++row)
        for (int column = 0; column < table.columns(); ++column) {
            QTextTableCell cell = table.cellAt(row, column);
            QTextTableCellFormat inner = cell.format().toTableCellFormat();
            inner.setLeftPadding(column == 0 ? 0 : kCellAcross); // flush with the text
            inner.setRightPadding(kCellAcross);
            inner.setTopPadding(kCellDown);
            inner.setBottomPadding(kCellDown);
            inner.setBottomBorderStyle(QTextFrameFormat::BorderStyle_Solid);
            inner.setBottomBorder(row == 0 ? 2 : 1);
            inner.setBottomBorderBrush(rule);
            cell.setFormat(inner);
        }
}

void Arrange(QTextDocument& text, const QPalette& palette) {
    text.setDocumentMargin(kMargin);
    text.setIndentWidth(kIndent);
    for (QTextBlock block = text.begin().next(); block.isValid(); block = block.next())
        if (QTextBlockFormat format = block.blockFormat(); format.headingLevel() > 0) {
            format.setTopMargin(kAboveHeading);
            QTextCursor(block).setBlockFormat(format);
        }
    for (QTextFrame* frame : text.rootFrame()->childFrames())
        if (auto* table = qobject_cast<QTextTable*>(frame))
            ArrangeTable(*table, palette);
}

} // namespace

QUrl HelpOn(const QString& page) {
    const QString path = QStringLiteral(":/help/%1/%2.md")
                             .arg(QLocale().name().section(u'_', 0, 0),
                                  QString::fromStdString(HelpPageOf(page.toStdString())));
    return QFile::exists(path) ? QUrl(QStringLiteral("qrc") + path) : QUrl();
}

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent), m_text(new QTextBrowser) {
    setObjectName(QStringLiteral("helpWindow"));
    setModal(false);
    m_text->setObjectName(QStringLiteral("helpText"));
    m_text->setFrameShape(QFrame::NoFrame);
    connect(m_text, &QTextBrowser::sourceChanged, this,
            [this] { Arrange(*m_text->document(), m_text->palette()); });
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(m_text);
    resize(kSize.boundedTo(screen()->availableSize() * 9 / 10));
}

void HelpWindow::ShowPage(const QString& page) {
    ShowText(page);
    show();
    raise();
    activateWindow();
}

void HelpWindow::ShowText(const QString& page) {
    setWindowTitle(tr("Help"));
    m_text->setAccessibleName(windowTitle());
    m_text->setSource(HelpOn(page), QTextDocument::MarkdownResource);
}

// The page may be another than the one that was asked for: links lead from page to page.
void HelpWindow::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    const bool isOther =
        event->type() == QEvent::LanguageChange || event->type() == QEvent::PaletteChange;
    if (!isOther || !m_text->source().isValid())
        return;
    const QString page = QFileInfo(m_text->source().path()).completeBaseName();
    m_text->setSource({}); // the same page has other colours now
    ShowText(page);
}

void OfferHelp(QDialog& dialog, const QString& page) {
    dialog.installEventFilter(new HelpKey(dialog, page));
}

} // namespace qx::app
