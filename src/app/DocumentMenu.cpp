#include "app/DocumentMenu.h"

#include "app/ControlTexts.h"
#include "app/Paths.h"
#include "app/SettingWords.h"

#include <QAction>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QSettings>

namespace qx::app {

namespace {

constexpr int kMostRecent = 8;
constexpr int kAutoSaveDelay = 1500; // milliseconds without an edit
const char* const kRecentKey = "recentDocuments";

QString Filter() {
    return DocumentMenu::tr("Keyboard documents (*.json);;All files (*)");
}

} // namespace

DocumentMenu::DocumentMenu(Workbench& workbench, QWidget* window)
    : QObject(window), m_workbench(workbench), m_window(window) {
    questions.unsaved = [this](const QString& document) {
        const auto answer = QMessageBox::question(
            m_window, tr("Unsaved changes"), tr("Save the changes to %1?").arg(document),
            QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
        return answer == QMessageBox::Save      ? Answer::Save
               : answer == QMessageBox::Discard ? Answer::Discard
                                                : Answer::Cancel;
    };
    questions.fileToOpen = [this] {
        return QFileDialog::getOpenFileName(m_window, tr("Open document"),
                                            ToQt(m_workbench.File().parent_path()), Filter());
    };
    questions.fileToSave = [this](const QString& suggestion) {
        return QFileDialog::getSaveFileName(m_window, tr("Save document"), suggestion, Filter());
    };
    m_autoSave.setSingleShot(true);
    m_autoSave.setInterval(kAutoSaveDelay);
    connect(&m_autoSave, &QTimer::timeout, this, &DocumentMenu::SaveByItself);
    connect(&workbench, &Workbench::DocumentChanged, this, &DocumentMenu::DocumentChanged);
}

void DocumentMenu::Fill(QMenu& menu) {
    menu.addAction(tr("&New"), QKeySequence::New, this, &DocumentMenu::New);
    m_open = menu.addAction(tr("&Open…"), QKeySequence::Open, this, [this] { Open({}); });
    m_recent = menu.addMenu(tr("Open &recent"));
    connect(m_recent, &QMenu::aboutToShow, this, &DocumentMenu::FillRecent);
    menu.addSeparator();
    m_save = menu.addAction(tr("&Save"), QKeySequence::Save, this, &DocumentMenu::Save);
    auto* saveAs =
        menu.addAction(tr("Save &as…"), QKeySequence::SaveAs, this, &DocumentMenu::SaveAs);
    if (saveAs->shortcut().isEmpty())
        saveAs->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
}

QString DocumentMenu::DocumentName() const {
    return m_workbench.File().empty() ? tr("untitled") : ToQt(m_workbench.File().filename());
}

void DocumentMenu::DocumentChanged() {
    if (m_workbench.IsModified() && !m_workbench.File().empty() &&
        m_workbench.Preferences().AutoSave())
        m_autoSave.start();
    else
        m_autoSave.stop();
}

bool DocumentMenu::MayLeaveDocument() {
    if (!m_workbench.IsModified())
        return true;
    if (!m_workbench.File().empty() && m_workbench.Preferences().AutoSave())
        return Save();
    switch (questions.unsaved(DocumentName())) {
    case Answer::Save:
        return Save();
    case Answer::Discard:
        return true;
    case Answer::Cancel:
        break;
    }
    return false;
}

void DocumentMenu::New() {
    if (MayLeaveDocument())
        m_workbench.NewDocument();
}

void DocumentMenu::Open(const QString& file) {
    if (!MayLeaveDocument())
        return;
    const QString chosen = file.isEmpty() ? questions.fileToOpen() : file;
    if (chosen.isEmpty())
        return;
    try {
        m_workbench.OpenDocument(ToPath(chosen), Workbench::OpenAs::File);
        NoteRecent(chosen);
        QString text = tr("Opened %1.").arg(chosen);
        const QString made = m_workbench.DocumentKeyboard();
        const QString present = m_workbench.KeyboardName();
        if (!made.isEmpty() && !present.isEmpty() && made != present)
            text +=
                u' ' + tr("It was made for a keyboard %1; this one is a %2.").arg(made, present);
        QStringList absent;
        for (const host::Section* section : m_workbench.AbsentSections())
            absent.append(SectionTitle(section->Info().key));
        if (!absent.isEmpty())
            text += u' ' + tr("This keyboard has no module for: %1. The document keeps these "
                              "settings; writing leaves them out.")
                               .arg(absent.join(QStringLiteral(", ")));
        emit Told(text);
    } catch (const std::exception& error) {
        emit Failed(ErrorText(error));
    }
}

void DocumentMenu::OpenCopy(const QString& file) {
    if (!MayLeaveDocument())
        return;
    try {
        m_workbench.OpenDocument(ToPath(file), Workbench::OpenAs::Copy);
        emit Told(tr("Opened as an untitled document: %1.").arg(file));
    } catch (const std::exception& error) {
        emit Failed(ErrorText(error));
    }
}

bool DocumentMenu::OpenLast() {
    const std::string last = m_workbench.Preferences().GetLastDownloadFile();
    if (last.empty())
        return false;
    Open(QString::fromStdString(last));
    return !m_workbench.File().empty();
}

bool DocumentMenu::Save() {
    return m_workbench.File().empty() ? SaveAs() : SaveInto(ToQt(m_workbench.File()));
}

bool DocumentMenu::SaveAs() {
    QString file =
        questions.fileToSave(m_workbench.File().empty() ? tr("keyboard") + QStringLiteral(".json")
                                                        : ToQt(m_workbench.File()));
    if (file.isEmpty())
        return false;
    if (QFileInfo(file).suffix().isEmpty())
        file += QStringLiteral(".json");
    return SaveInto(file);
}

bool DocumentMenu::SaveInto(const QString& file) {
    try {
        m_workbench.SaveDocument(ToPath(file));
        NoteRecent(file);
        emit Told(tr("Saved %1.").arg(file));
        return true;
    } catch (const std::exception& error) {
        emit Failed(ErrorText(error));
        return false;
    }
}

void DocumentMenu::SaveByItself() {
    if (!m_workbench.IsModified() || m_workbench.File().empty())
        return;
    try {
        m_workbench.SaveDocument(m_workbench.File());
        emit SavedByItself(tr("Saved %1.").arg(DocumentName()));
    } catch (const std::exception& error) {
        emit Failed(ErrorText(error));
    }
}

void DocumentMenu::NoteRecent(const QString& file) {
    QSettings settings;
    QStringList recent = settings.value(QLatin1String(kRecentKey)).toStringList();
    const QString absolute = QFileInfo(file).absoluteFilePath();
    recent.removeAll(absolute);
    recent.prepend(absolute);
    settings.setValue(QLatin1String(kRecentKey), QStringList(recent.mid(0, kMostRecent)));
}

void DocumentMenu::FillRecent() {
    m_recent->clear();
    for (const QString& file : QSettings().value(QLatin1String(kRecentKey)).toStringList())
        m_recent->addAction(file, this, [this, file] { Open(file); });
    if (m_recent->isEmpty())
        m_recent->addAction(tr("No documents yet"))->setEnabled(false);
}

} // namespace qx::app
