#include "app/SheetMenu.h"

#include "app/LocalTime.h"
#include "app/Paths.h"
#include "app/SettingWords.h"
#include "sheet/KeySheet.h"
#include "sheet/SheetFormat.h"

#include <QDate>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>

namespace qx::app {

SheetMenu::SheetMenu(Workbench& workbench, QWidget* window)
    : QObject(window), m_workbench(workbench) {
    questions.file = [window](const QString& suggestion) {
        return QFileDialog::getSaveFileName(window, tr("Export key sheet"), suggestion,
                                            tr("Key sheets (%1)").arg(sheet::kFilePatterns));
    };
    questions.printer = [window](QPrinter& printer) {
        QPrintDialog dialog(&printer, window);
        return dialog.exec() == QDialog::Accepted;
    };
}

void SheetMenu::Fill(QMenu& menu) {
    menu.addAction(tr("&Print key sheet…"), QKeySequence(Qt::CTRL | Qt::Key_P), this,
                   &SheetMenu::Print);
    menu.addAction(tr("&Export key sheet…"), QKeySequence(Qt::CTRL | Qt::Key_E), this,
                   &SheetMenu::Export);
}

sheet::KeySheet SheetMenu::Sheet() const {
    const std::string keyboard =
        m_workbench.IsConnected() ? m_workbench.Session().Keyboard().name : std::string();
    const QString date = LocalDate(QDate::currentDate());
    return {keyboard,
            files::TextOf(m_workbench.File().filename()),
            date.toStdString(),
            m_workbench.History().Sections(),
            m_workbench.Layout(),
            [](const host::SectionInfo& section) { return SectionTitle(section.key); }};
}

void SheetMenu::Export() {
    const auto& document = m_workbench.File();
    auto suggestion = document.empty() ? std::filesystem::path("keyboard") : document;
    QString file = questions.file(ToQt(suggestion.replace_extension(".pdf")));
    if (file.isEmpty())
        return;
    if (QFileInfo(file).suffix().isEmpty())
        file += QStringLiteral(".pdf");
    try {
        sheet::WriteKeySheet(Sheet(), ToPath(file));
        emit Done(tr("Key sheet written to %1.").arg(file));
    } catch (const std::exception& error) {
        emit Failed(FailureOf(tr("The key sheet was not written."), error));
    }
}

void SheetMenu::Print() {
    QPrinter printer(QPrinter::HighResolution);
    sheet::SetKeySheetPage(printer);
    printer.setFullPage(true);
    if (!questions.printer(printer))
        return;
    sheet::PaintKeySheet(Sheet(), printer);
    emit Done(tr("Key sheet sent to the printer."));
}

} // namespace qx::app
