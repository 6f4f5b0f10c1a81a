#include "app/FilesPage.h"

#include "app/ErrorWords.h"
#include "app/Paths.h"
#include "app/PreferenceTab.h"
#include "app/Working.h"
#include "views/Bindings.h"
#include "views/PlainText.h"

#include <QFileDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace qx::app {

FilesPage::FilesPage(Workbench& workbench, QWidget* parent)
    : QWidget(parent), m_workbench(workbench) {
    chooseFile = [this](const QString& title, bool isSaving, const QString& suggestion) {
        return isSaving ? QFileDialog::getSaveFileName(this, title, suggestion)
                        : QFileDialog::getOpenFileName(this, title, suggestion);
    };
    confirm = [this](const QString& question) {
        return QMessageBox::question(this, tr("Load from file"), views::Plain(question),
                                     QMessageBox::Yes | QMessageBox::No,
                                     QMessageBox::No) == QMessageBox::Yes;
    };
    auto* form = new QWidget;
    form->setMaximumWidth(kFormWidth);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(form, 1);
    row->addStretch();
    auto* column = new QVBoxLayout(form);
    column->setContentsMargins({});
    AddFile(*column, host::KindOf(host::KeyboardFile::Rom), tr("Keyboard firmware"),
            tr("The software that runs on the keyboard."));
    AddFile(
        *column, host::KindOf(host::KeyboardFile::ChipcardRom), tr("Chipcard reader firmware"),
        tr("The software of the chipcard reader, sent over the serial port set in Preferences."));
    AddFile(*column, host::KindOf(host::KeyboardFile::Parameter), tr("Parameter memory"),
            tr("The complete settings memory, in the driver's file format. After loading, "
               "read the keyboard to see its new contents."));
    AddCodePage(*column);
    column->addStretch(1);
    const auto enable = [this] { setEnabled(m_workbench.IsConnected()); };
    connect(&workbench, &Workbench::KeyboardChanged, this, enable);
    enable();
}

void FilesPage::AddFile(QVBoxLayout& column, const host::KeyboardFileKind& kind,
                        const QString& title, const QString& explanation) {
    auto* group = new QGroupBox(title);
    auto* text = new QLabel(explanation);
    text->setWordWrap(true);
    auto* save = new QPushButton(tr("Save to file…"));
    auto* load = new QPushButton(tr("Load from file…"));
    const QString key = views::ToQt(std::string(CodeOf(kind.file)));
    save->setObjectName(key + QStringLiteral("_save"));
    load->setObjectName(key + QStringLiteral("_load"));
    save->setAccessibleName(title + QStringLiteral(": ") + save->text());
    load->setAccessibleName(title + QStringLiteral(": ") + load->text());
    connect(save, &QPushButton::clicked, this,
            [this, &kind, title] { Transfer(kind, title, Direction::KeyboardToFile); });
    connect(load, &QPushButton::clicked, this,
            [this, &kind, title] { Transfer(kind, title, Direction::FileToKeyboard); });
    auto* row = new QHBoxLayout(group);
    row->addWidget(text, 1);
    row->addWidget(save);
    row->addWidget(load);
    column.addWidget(group);
}

void FilesPage::AddCodePage(QVBoxLayout& column) {
    auto* group = new QGroupBox(tr("Code page"));
    auto* text = new QLabel(tr("Compares the keyboard's code page with a file."));
    text->setWordWrap(true);
    auto* compare = new QPushButton(tr("Compare with file…"));
    compare->setObjectName(QStringLiteral("codepage_compare"));
    connect(compare, &QPushButton::clicked, this, &FilesPage::CompareCodePage);
    auto* row = new QHBoxLayout(group);
    row->addWidget(text, 1);
    row->addWidget(compare);
    column.addWidget(group);
}

void FilesPage::Attempt(const QString& doing, Work work, const QString& failed,
                        const std::function<QString()>& operation) {
    try {
        const QString done = [&] {
            const Working working(m_workbench, doing, work);
            return operation();
        }();
        emit Reported(done);
    } catch (const host::Error& error) {
        if (error.Kind() == host::ErrorKind::Stopped)
            emit Stopped(CauseText(error));
        else
            emit Failed(FailureOf(failed, error));
    } catch (const std::exception& error) {
        emit Failed(FailureOf(failed, error));
    }
}

void FilesPage::Transfer(const host::KeyboardFileKind& kind, const QString& title,
                         Direction direction) {
    const bool isSaving = direction == Direction::KeyboardToFile;
    const QString file = chooseFile(title, isSaving, {});
    if (file.isEmpty())
        return;
    if (!isSaving &&
        !confirm(tr("%1: replace the keyboard's contents with the file %2?").arg(title, file)))
        return;
    const QXProgSettings& preferences = m_workbench.Preferences();
    const host::SerialLine line{preferences.ChipcardBaudrate(), preferences.ChipcardPort()};
    const auto path = ToPath(file);
    if (isSaving)
        return Attempt(tr("Reading from the keyboard…"), Work::Read,
                       tr("%1 was not saved.").arg(title), [&] {
                           host::SaveKeyboardFile(m_workbench.Session(), kind, path, line);
                           return tr("Keyboard to file: %1 saved to %2.").arg(title, file);
                       });
    Attempt(tr("Writing to the keyboard. Do not unplug it."), Work::Load,
            tr("%1 was not loaded.").arg(title), [&] {
                m_workbench.LoadKeyboardFile(kind, path, line);
                m_workbench.Connect(); // its name and modules may have changed
                return tr("File to keyboard: %1 loaded from %2.").arg(title, file);
            });
}

void FilesPage::CompareCodePage() {
    const QString file =
        chooseFile(tr("Code page"), false, ToQt(m_workbench.Preferences().PosCodePage()));
    if (file.isEmpty())
        return;
    Attempt(tr("Reading from the keyboard…"), Work::Read, tr("The code page was not compared."),
            [&] {
                return host::HasCodePage(m_workbench.Session(), ToPath(file))
                           ? tr("The keyboard's code page equals %1.").arg(file)
                           : tr("The keyboard's code page differs from %1.").arg(file);
            });
}

} // namespace qx::app
