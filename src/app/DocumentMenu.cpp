#include "app/DocumentMenu.h"

#include "app/LocalTime.h"
#include "app/Paths.h"
#include "app/SettingWords.h"
#include "views/PlainText.h"

#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>

namespace qx::app {

namespace {

constexpr int kMostRecent = 8;
constexpr int kAutoSaveDelay = 1500;    // milliseconds without an edit
constexpr int kKeepUnsavedDelay = 1000; // milliseconds after an edit
const char* const kRecentKey = "recentDocuments";

QString Filter() {
    return DocumentMenu::tr("Keyboard documents (*.json);;All files (*)");
}

// The folder for copies of unsaved work; empty for a user without a folder.
std::filesystem::path UnsavedFolder(const Workbench& workbench) {
    try {
        return workbench.UnsavedFolder();
    } catch (const host::Error&) {
        return {};
    }
}

DocumentMenu::Answer AskUnsaved(QWidget* window, const QString& document) {
    const auto answer = QMessageBox::question(
        window, DocumentMenu::tr("Unsaved changes"),
        views::Plain(
            DocumentMenu::tr("“%1” is about to be closed. Save its changes first?").arg(document)),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    return answer == QMessageBox::Save      ? DocumentMenu::Answer::Save
           : answer == QMessageBox::Discard ? DocumentMenu::Answer::Discard
                                            : DocumentMenu::Answer::Cancel;
}

DocumentMenu::Answer AskNotSaved(QWidget* window, const Failure& failure, bool isClosing) {
    QMessageBox box(QMessageBox::Warning, DocumentMenu::tr("Not saved"), failure.text,
                    QMessageBox::Cancel, window);
    box.setTextFormat(Qt::PlainText);
    box.setDetailedText(failure.details);
    const auto* saveAs = box.addButton(DocumentMenu::tr("Save &as…"), QMessageBox::AcceptRole);
    const auto* discard = isClosing ? box.addButton(QMessageBox::Discard) : nullptr;
    box.setDefaultButton(QMessageBox::Cancel);
    box.exec();
    if (box.clickedButton() == saveAs)
        return DocumentMenu::Answer::SaveAs;
    return discard != nullptr && box.clickedButton() == discard ? DocumentMenu::Answer::Discard
                                                                : DocumentMenu::Answer::Cancel;
}

DocumentMenu::LeftAnswer AskLeft(QWidget* window, const QString& text) {
    QMessageBox box(QMessageBox::Question, DocumentMenu::tr("Unsaved work"), text,
                    QMessageBox::NoButton, window);
    box.setTextFormat(Qt::PlainText);
    auto* open = box.addButton(DocumentMenu::tr("&Open it"), QMessageBox::AcceptRole);
    const auto* discard =
        box.addButton(DocumentMenu::tr("&Discard it"), QMessageBox::DestructiveRole);
    auto* later = box.addButton(DocumentMenu::tr("&Later"), QMessageBox::RejectRole);
    box.setDefaultButton(open);
    box.setEscapeButton(later);
    box.exec();
    if (box.clickedButton() == open)
        return DocumentMenu::LeftAnswer::Open;
    return box.clickedButton() == discard ? DocumentMenu::LeftAnswer::Discard
                                          : DocumentMenu::LeftAnswer::Later;
}

} // namespace

DocumentMenu::DocumentMenu(Workbench& workbench, QWidget* window)
    : QObject(window), m_workbench(workbench), m_window(window),
      m_unsaved(UnsavedFolder(workbench)) {
    questions.unsaved = [this](const QString& document) { return AskUnsaved(m_window, document); };
    questions.notSaved = [this](const Failure& failure, bool isClosing) {
        return AskNotSaved(m_window, failure, isClosing);
    };
    questions.leftCopy = [this](const QString& text) { return AskLeft(m_window, text); };
    questions.fileToOpen = [this] {
        return QFileDialog::getOpenFileName(m_window, tr("Open document"),
                                            ToQt(m_workbench.File().parent_path()), Filter());
    };
    questions.fileToSave = [this](const QString& suggestion) {
        return QFileDialog::getSaveFileName(m_window, tr("Save document"), suggestion, Filter());
    };
    m_autoSave.setSingleShot(true);
    m_autoSave.setInterval(kAutoSaveDelay);
    m_keepUnsaved.setSingleShot(true);
    m_keepUnsaved.setInterval(kKeepUnsavedDelay);
    connect(&m_autoSave, &QTimer::timeout, this, &DocumentMenu::SaveByItself);
    connect(&m_keepUnsaved, &QTimer::timeout, this, &DocumentMenu::KeepUnsaved);
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
    if (!m_workbench.IsModified()) {
        m_autoSave.stop();
        KeepUnsaved();
        return;
    }
    if (!m_workbench.File().empty() && m_workbench.Preferences().AutoSave())
        m_autoSave.start();
    if (!m_keepUnsaved.isActive())
        m_keepUnsaved.start();
}

void DocumentMenu::KeepUnsaved() {
    try {
        if (!m_workbench.IsModified()) {
            m_keepUnsaved.stop();
            return m_unsaved.Drop();
        }
        if (m_workbench.IsBusy()) // the controls may be half updated
            return m_keepUnsaved.start();
        m_unsaved.Keep(m_workbench.Document(), m_workbench.File());
    } catch (const std::exception&) { // the document itself is not affected
        emit Warned(tr("No copy of the unsaved changes can be kept: a crash would lose them."));
    }
}

void DocumentMenu::FinishTyping() {
    if (QWidget* field = QApplication::focusWidget()) {
        field->clearFocus();
        field->setFocus(Qt::OtherFocusReason);
    }
}

bool DocumentMenu::MayLeaveDocument() {
    FinishTyping();
    if (!m_workbench.IsModified())
        return true;
    const bool savesByItself = !m_workbench.File().empty() && m_workbench.Preferences().AutoSave();
    switch (savesByItself ? Answer::Save : questions.unsaved(DocumentName())) {
    case Answer::Save:
        return SaveInto(ToQt(m_workbench.File()), true);
    case Answer::SaveAs:
        return SaveInto({}, true);
    case Answer::Discard:
        m_autoSave.stop(); // it would save the discarded changes
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
        emit Reported(OpenedText(chosen));
    } catch (const std::exception& error) {
        emit Failed(FailureOf(tr("%1 could not be opened.").arg(chosen), error));
    }
}

QString DocumentMenu::OpenedText(const QString& file) const {
    QString text = tr("Opened %1.").arg(file);
    const QString made = m_workbench.DocumentKeyboard();
    const QString present = m_workbench.KeyboardName();
    if (!made.isEmpty() && !present.isEmpty() && made != present)
        text +=
            u' ' + tr("It was made for %1, but the connected keyboard is %2.").arg(made, present);
    QStringList absent;
    for (const host::Section* section : m_workbench.AbsentSections())
        absent.append(SectionTitle(section->Info().key));
    if (!absent.isEmpty())
        text += u' ' + tr("This keyboard has no module for: %1. The document keeps these "
                          "settings; writing leaves them out.")
                           .arg(absent.join(QStringLiteral(", ")));
    return text;
}

void DocumentMenu::OpenCopy(const QString& file) {
    if (!MayLeaveDocument())
        return;
    try {
        m_workbench.OpenDocument(ToPath(file), Workbench::OpenAs::Copy);
        emit Reported(tr("Opened as an untitled document: %1.").arg(file));
    } catch (const std::exception& error) {
        emit Failed(FailureOf(tr("%1 could not be opened.").arg(file), error));
    }
}

bool DocumentMenu::OpenLeft() {
    std::vector<UnsavedWork::LeftCopy> passed; // claimed until all have been offered
    while (auto copy = m_unsaved.Left()) {
        const LeftAnswer answer = AskAboutLeft(*copy);
        if (answer == LeftAnswer::Open)
            return true;
        if (answer == LeftAnswer::Discard)
            copy->Remove();
        else
            passed.push_back(std::move(*copy));
    }
    return false;
}

// The user's answer after acting on it: a copy that cannot be opened is kept for later.
DocumentMenu::LeftAnswer DocumentMenu::AskAboutLeft(UnsavedWork::LeftCopy& copy) {
    try {
        const QString time = LocalTime(QFileInfo(ToQt(copy.File())).lastModified());
        const auto own = copy.OwnFile();
        const QString name = own.empty() ? tr("an untitled document") : ToQt(own);
        const LeftAnswer answer =
            questions.leftCopy(tr("The program ended before the changes to %1 were saved "
                                  "(%2). Open them as an untitled document?")
                                   .arg(name, time));
        if (answer != LeftAnswer::Open)
            return answer;
        m_workbench.OpenUnsaved(copy.Document());
        KeepUnsaved(); // before the old copy is deleted
        copy.Remove();
        emit Reported(tr("Opened the unsaved changes to %1; they are not saved yet.").arg(name));
        return answer;
    } catch (const std::exception& error) {
        emit Failed(FailureOf(tr("Unsaved work could not be opened."), error));
        return LeftAnswer::Later;
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
    return SaveInto(ToQt(m_workbench.File()), false);
}

bool DocumentMenu::SaveAs() {
    return SaveInto({}, false);
}

QString DocumentMenu::AskForFile() const {
    const auto& present = m_workbench.File();
    QString file = questions.fileToSave(present.empty() ? tr("keyboard") + QStringLiteral(".json")
                                                        : ToQt(present));
    if (!file.isEmpty() && QFileInfo(file).suffix().isEmpty())
        file += QStringLiteral(".json");
    return file;
}

// Saves to the file, or asks for one if it is empty. True if the document is saved or, when it is
// being closed, discarded.
bool DocumentMenu::SaveInto(QString file, bool isClosing) {
    FinishTyping();
    for (;;) {
        if (file.isEmpty())
            file = AskForFile();
        if (file.isEmpty())
            return false;
        try {
            m_workbench.SaveDocument(ToPath(file));
            NoteRecent(file);
            emit Reported(tr("Saved %1.").arg(file));
            return true;
        } catch (const std::exception& error) {
            const Failure failure = FailureOf(tr("%1 could not be saved.").arg(file), error);
            const Answer answer = questions.notSaved(failure, isClosing);
            if (answer == Answer::Discard && isClosing) {
                m_autoSave.stop();
                return true;
            }
            if (answer != Answer::SaveAs)
                return false;
            file.clear();
        }
    }
}

void DocumentMenu::SaveByItself() {
    if (!m_workbench.IsModified() || m_workbench.File().empty())
        return;
    if (m_workbench.IsBusy())
        return m_autoSave.start();
    try {
        m_workbench.SaveDocument(m_workbench.File());
        emit SavedByItself(tr("Saved %1.").arg(DocumentName()));
    } catch (const std::exception& error) {
        const QString what = tr("%1 could not be saved automatically. Save it under another name.")
                                 .arg(ToQt(m_workbench.File()));
        emit Warned(FailureOf(what, error).text);
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
