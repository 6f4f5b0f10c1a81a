#include "app/MainWindow.h"

#include "app/ChangeMark.h"
#include "app/DifferenceTree.h"
#include "app/FileDrops.h"
#include "app/Help.h"
#include "app/Places.h"
#include "app/SettingWords.h"
#include "app/StateChip.h"
#include "app/StatusLine.h"
#include "app/WindowPages.h"
#include "app/WindowPlace.h"
#include "app/WorkBar.h"
#include "views/Bindings.h"
#include "views/LineIcon.h"
#include "views/PlainText.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QMenuBar>
#include <QMessageBox>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWhatsThis>

#include <utility>

namespace qx::app {

using views::ToQt;

MainWindow::MainWindow(Workbench& workbench, const Platform& platform, Language& language)
    : m_workbench(workbench), m_language(language),
      m_edits(workbench, platform,
              {[this](const QString& question) { return screen.ask(question); },
               [this](const QString& text) {
                   if (QWidget* editor = QApplication::activeModalWidget())
                       QMessageBox::information(editor, windowTitle(), views::Plain(text));
                   else
                       m_notice->Show({Notice::Kind::Information, text});
               },
               [this](const QString& text) { m_notice->Show(UndoableNotice(text)); },
               [](const QString& text) {
                   QMessageBox::information(QApplication::activeModalWidget(), tr("Help"), text);
               }}),
      m_documents(new DocumentMenu(workbench, this)),
      m_transfers(new app::Transfers(workbench, *m_documents, this)),
      m_keyboards(new KeyboardMenu(workbench, *m_transfers, this)),
      m_sheets(new SheetMenu(workbench, this)), m_state(new KeyboardState(workbench, this)),
      m_pages(new WindowPages(
          {workbench, m_edits, *m_documents, *m_transfers, *m_keyboards, *m_state}, this)) {
    screen.ask = [this](const QString& question) {
        return QMessageBox::question(this, windowTitle(), views::Plain(question),
                                     QMessageBox::Yes | QMessageBox::No,
                                     QMessageBox::No) == QMessageBox::Yes;
    };
    screen.warn = [this](const Failure& failure) {
        m_notice->Show(
            {Notice::Kind::Failure, failure.text, failure.details, OffersFor(failure.remedy)});
    };
    setObjectName(QStringLiteral("mainWindow"));
    RestorePlace(*this, workbench.Preferences());
}

MainWindow::~MainWindow() = default;

// Fonts, icons and the widgets' first layout take longer than all else at the start.
void MainWindow::Fill() {
    ConnectSignals();
    MakeAgain();
    if (const QString warning = m_workbench.PreferencesWarning(); !warning.isEmpty())
        ReportWarning(warning);
    qApp->installEventFilter(this);
    emit Appeared();
}

void MainWindow::ConnectSignals() {
    connect(m_documents, &DocumentMenu::Reported, this, &MainWindow::Report);
    connect(m_documents, &DocumentMenu::Warned, this, &MainWindow::ReportWarning);
    connect(m_documents, &DocumentMenu::SavedByItself, this,
            [this](const QString& text) { m_status->ShowBriefly(text); });
    connect(m_documents, &DocumentMenu::Failed, this, &MainWindow::Warn);
    connect(m_sheets, &SheetMenu::Done, this, &MainWindow::ReportDone);
    connect(m_sheets, &SheetMenu::Failed, this, &MainWindow::Warn);
    connect(m_transfers, &Transfers::Done, this, &MainWindow::ReportDone);
    connect(m_transfers, &Transfers::ReadOther, this,
            [this](const QString& text, const std::vector<host::Difference>& differences) {
                m_notice->Show({Notice::Kind::Success, text, {}, {{tr("Show"), [this, differences] {
                                                                       ShowDifferences(differences);
                                                                   }}}});
            });
    connect(m_transfers, &Transfers::Stopped, this, &MainWindow::Report);
    connect(m_transfers, &Transfers::Warned, this, &MainWindow::ReportWarning);
    connect(m_transfers, &Transfers::Unresolved, this, [this](const QString& text) {
        m_notice->Show({Notice::Kind::Warning, text, {}, OffersFor(Failure::Remedy::Resolve)});
    });
    connect(m_transfers, &Transfers::Failed, this, &MainWindow::Warn);
    connect(m_transfers, &Transfers::PlaceChosen, this, &MainWindow::GoTo);
    connect(m_transfers, &Transfers::Written, this, [this] {
        if (m_workbench.Simulated() != nullptr && m_workbench.Preferences().AutoTestdrive())
            ShowPage(kTestDrive);
    });
    connect(m_keyboards, &KeyboardMenu::Reported, this, &MainWindow::Report);
    connect(m_keyboards, &KeyboardMenu::ConnectionFailed, this, [this] { ShowPage(kOverview); });
    connect(m_keyboards, &KeyboardMenu::Connected, this, [this] { m_edits.Reload(); });
    connect(m_pages, &WindowPages::Reported, this, &MainWindow::ReportDone);
    connect(m_pages, &WindowPages::Stopped, this, &MainWindow::Report);
    connect(m_pages, &WindowPages::Failed, this, &MainWindow::Warn);
    connect(m_pages, &WindowPages::PreferencesChanged, this, &MainWindow::ApplyPreferences);
    connect(m_pages, &WindowPages::AppearanceChanged, this, [this] {
        ApplyPreferences();
        QMetaObject::invokeMethod(this, &MainWindow::MakeAgain, Qt::QueuedConnection);
    });
    connect(m_pages, &WindowPages::PlaceChosen, this, &MainWindow::GoTo);
    connect(m_pages, &WindowPages::Shown, this, [this] { m_notice->ClearOld(); });
    connect(&m_workbench, &Workbench::KeyboardChanged, this,
            [this] { m_pages->ShowKeyboard(*m_go); });
    connect(&m_workbench, &Workbench::DocumentChanged, this, &MainWindow::ShowDocument);
    connect(&m_workbench, &Workbench::Began, this, [this] { m_notice->ClearOld(); });
    connect(&m_workbench, &Workbench::Noticed, this, &MainWindow::ReportWarning);
    connect(&m_workbench, &Workbench::Touched, this, [this] { m_notice->ClearOld(); });
    auto* drops = new FileDrops(this);
    connect(drops, &FileDrops::Dropped, this, &MainWindow::OpenDropped);
}

// Everything that has texts or icons is made again in the present language and colours; the user
// stays where he was, and a notice stays in view.
void MainWindow::MakeAgain() {
    m_shownLanguage = m_workbench.Preferences().PreferedAppLang();
    m_language.Switch(m_shownLanguage);
    const WindowPages::Spot spot = m_pages->Current();
    const QString focus =
        QApplication::focusWidget() != nullptr ? QApplication::focusWidget()->objectName() : "";
    m_workbench.Quietly([this] { m_workbench.Faces().Translate(); });
    m_edits.Reload();
    menuBar()->clear();
    for (QToolBar* bar : findChildren<QToolBar*>())
        delete bar;
    for (QAction* action : actions())
        removeAction(action);
    MakePages();
    MakeActions();
    MakeToolBar();
    setStatusBar(m_status = new StatusLine(m_workbench));
    auto* chip =
        new StateChip(*m_state, {m_keyboards->WriteAction(), m_keyboards->ResolveAction()});
    connect(chip, &StateChip::ConnectRequested, m_keyboards, &KeyboardMenu::ConnectAgain);
    m_status->insertWidget(0, chip);
    m_pages->ShowKeyboard(*m_go);
    ShowDocument();
    m_pages->ShowAgain(spot);
    if (auto* widget = focus.isEmpty() ? nullptr : centralWidget()->findChild<QWidget*>(focus))
        widget->setFocus();
}

void MainWindow::MakeActions() {
    QMenu* document = menuBar()->addMenu(tr("&Document"));
    m_documents->Fill(*document);
    document->addSeparator();
    m_sheets->Fill(*document);
    document->addSeparator();
    document->addAction(tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), this, &QWidget::close);

    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    m_undo = edit->addAction(views::LineIcon(QStringLiteral("undo")), tr("&Undo"),
                             QKeySequence(Qt::CTRL | Qt::Key_Z), this, &MainWindow::Undo);
    m_redo = edit->addAction(views::LineIcon(QStringLiteral("redo")), tr("&Redo"), this,
                             &MainWindow::Redo);
    m_redo->setShortcuts({Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y});
    edit->addSeparator();
    edit->addAction(tr("&Find"), this, [this] { m_pages->StartSearch(); })
        ->setShortcuts({Qt::CTRL | Qt::Key_K, Qt::CTRL | Qt::Key_F});

    QAction* beforeKeys = edit->addSeparator();
    connect(edit, &QMenu::aboutToShow, this,
            [this, edit, beforeKeys] { m_pages->ShowKeyActions(*edit, beforeKeys); });

    m_keyboards->Fill(*menuBar()->addMenu(tr("&Keyboard")));
    m_go = menuBar()->addMenu(tr("&Go"));
    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&Help on this page"), QKeySequence(Qt::Key_F1), this,
                    &MainWindow::ShowHelp);
    QAction* whatsThis = QWhatsThis::createAction(help);
    whatsThis->setText(tr("&What is this?"));
    help->addAction(whatsThis);
    help->addSeparator();
    help->addAction(tr("&About"), this, [this] {
        QMessageBox::about(this, tr("About"),
                           tr("QXControls %1: programs modular point-of-sale keyboards.")
                               .arg(QApplication::applicationVersion()));
    });
}

void MainWindow::MakeToolBar() {
    QToolBar* bar = addToolBar(tr("Main"));
    bar->setObjectName(QStringLiteral("mainToolBar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->addAction(m_keyboards->ReadAction());
    bar->addAction(m_keyboards->WriteAction());
    bar->addSeparator();
    m_documents->OpenAction()->setIcon(views::LineIcon(QStringLiteral("open")));
    m_documents->SaveAction()->setIcon(views::LineIcon(QStringLiteral("save")));
    bar->addAction(m_documents->OpenAction());
    bar->addAction(m_documents->SaveAction());
    bar->addSeparator();
    bar->addAction(m_undo);
    bar->addAction(m_redo);
}

void MainWindow::MakePages() {
    if (m_notice == nullptr)
        m_notice = new NoticeBar;
    auto* notices = new QWidget;
    auto* column = new QVBoxLayout(notices);
    const QMargins page = column->contentsMargins();
    column->setContentsMargins(page.left(), 0, page.right(), 0);
    column->addWidget(new WorkBar(m_workbench));
    const bool isNoticed = m_notice->isVisible();
    column->addWidget(m_notice);
    m_notice->setVisible(isNoticed);
    QWidget* book = m_pages->Make(notices);
    setCentralWidget(book);
    if (isVisible())
        book->show(); // in a window that is shown already, nothing else does it
}

void MainWindow::ShowPage(const QString& id) {
    m_pages->Show(id);
}

void MainWindow::GoTo(const std::string& place) {
    ShowPage(ToQt(std::string(SectionOfPlace(place))));
    m_pages->FocusPage();
    ShowChange(place);
}

void MainWindow::Undo() {
    Go(m_workbench.History().ToUndo().place, &Workbench::Undo);
}

void MainWindow::Redo() {
    Go(m_workbench.History().ToRedo().place, &Workbench::Redo);
}

// The place is shown before the change too, to see which of its editors change.
void MainWindow::Go(std::string place, void (Workbench::*step)()) {
    ShowChange(place);
    const ChangeMark mark(*centralWidget());
    (m_workbench.*step)();
    ShowChange(place);
    mark.MarkChanged();
}

void MainWindow::ShowChange(const std::string& place) {
    const Place parts = Place::Of(place);
    if (m_workbench.Configuration().Find(parts.Section()) == nullptr)
        return;
    ShowPage(ToQt(std::string(parts.Section())));
    m_workbench.Quietly([&] { m_workbench.Faces().Of(parts.Section()).Show(parts); });
}

void MainWindow::Report(const QString& text) {
    m_notice->Show({Notice::Kind::Information, text});
}

Notice MainWindow::UndoableNotice(const QString& text) {
    const host::History& history = m_workbench.History();
    return {Notice::Kind::Success,
            text,
            {},
            {{tr("Undo"), [this] { m_undo->trigger(); }}},
            [&history, step = history.LastStep()] { return history.LastStep() == step; }};
}

void MainWindow::ReportDone(const QString& text) {
    m_notice->Show({Notice::Kind::Success, text});
}

void MainWindow::ReportWarning(const QString& text) {
    m_notice->Show({Notice::Kind::Warning, text});
}

void MainWindow::ShowDifferences(const std::vector<host::Difference>& differences) {
    auto* sheet = new QDialog(this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->setObjectName(QStringLiteral("differences"));
    sheet->setWindowTitle(tr("Changes in the document"));
    auto* tree = new DifferenceTree(differences, tr("Before"), tr("As read from the keyboard"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, sheet, &QDialog::reject);
    connect(tree, &DifferenceTree::Chosen, sheet, [this, sheet](const std::string& place) {
        sheet->close();
        GoTo(place);
    });
    auto* column = new QVBoxLayout(sheet);
    column->addWidget(tree);
    column->addWidget(buttons);
    sheet->resize(820, 480);
    sheet->open();
}

std::vector<Notice::Offer> MainWindow::OffersFor(Failure::Remedy remedy) {
    switch (remedy) {
    case Failure::Remedy::None:
        break;
    case Failure::Remedy::Resolve:
        return {{tr("Resolve…"), [this] { m_keyboards->ResolveAction()->trigger(); }}};
    case Failure::Remedy::Backups:
        return {{tr("Show backups"), [this] { ShowPage(kBackups); }}};
    }
    return {};
}

void MainWindow::Warn(const Failure& failure) {
    screen.warn(failure);
}

void MainWindow::ShowDocument() {
    const host::History& history = m_workbench.History();
    const auto show = [](QAction& action, const QString& name, const QString& text) {
        action.setEnabled(!text.isEmpty());
        const QString whole = text.isEmpty() ? name : name + QStringLiteral(": ") + text;
        action.setText(whole);
        action.setIconText(QString(name).remove(u'&'));
        action.setToolTip(QString(whole).remove(u'&'));
    };
    show(*m_undo, tr("&Undo"), history.CanUndo() ? NameText(history.ToUndo()) : QString());
    show(*m_redo, tr("&Redo"), history.CanRedo() ? NameText(history.ToRedo()) : QString());
    setWindowTitle(tr("%1[*] — QXControls").arg(m_documents->DocumentName()));
    setWindowModified(m_workbench.IsModified());
    m_pages->ShowCounts();
    m_notice->ClearOld();
}

void MainWindow::ShowHelp() {
    if (m_help == nullptr)
        m_help = new HelpWindow(this);
    m_help->ShowPage(m_pages->Current().page);
}

void MainWindow::ApplyPreferences() {
    m_workbench.SavePreferences();
    m_workbench.ReloadPreferences();
    m_edits.Reload();
    if (m_workbench.Preferences().PreferedAppLang() != m_shownLanguage)
        QMetaObject::invokeMethod(this, &MainWindow::MakeAgain, Qt::QueuedConnection);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    // Edits after the user releases or leaves a widget are a new undo step.
    if (event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::FocusOut)
        m_workbench.History().Seal();
    // No KeyPress follows if the key is a shortcut.
    const bool isInput = event->type() == QEvent::MouseButtonPress ||
                         event->type() == QEvent::KeyPress ||
                         event->type() == QEvent::ShortcutOverride;
    if (isInput && QApplication::activeModalWidget() == nullptr) // an answer begins nothing
        m_notice->Age();
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::OpenDropped(const QStringList& files) {
    m_documents->Open(files.front());
    if (files.size() > 1)
        ReportWarning(tr("One document is open at a time; not opened: %1.")
                          .arg(files.mid(1).join(QStringLiteral(", "))));
}

void MainWindow::paintEvent(QPaintEvent* event) {
    QMainWindow::paintEvent(event);
    if (!std::exchange(m_isPainted, true))
        QMetaObject::invokeMethod(this, &MainWindow::Fill, Qt::QueuedConnection);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!m_documents->MayLeaveDocument()) {
        event->ignore();
        return;
    }
    m_documents->DropUnsaved();
    KeepPlace(*this, m_workbench.Preferences());
    m_workbench.SavePreferences();
    m_workbench.Disconnect();
    event->accept();
}

} // namespace qx::app
