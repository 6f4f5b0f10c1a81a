#include "app/MainWindow.h"

#include "app/BackupsPage.h"
#include "app/ControlTexts.h"
#include "app/FilesPage.h"
#include "app/NoticeBar.h"
#include "app/OverviewPage.h"
#include "app/Pages.h"
#include "app/Paths.h"
#include "app/Places.h"
#include "app/PreferencesPage.h"
#include "app/SettingWords.h"
#include "app/TestDrivePage.h"
#include "app/WindowPlace.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "views/Bindings.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressBar>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

namespace qx::app {

using views::ToQt;

namespace {

constexpr int kPageIdRole = Qt::UserRole;
const QString kOverview = QStringLiteral("overview");
const QString kFiles = QStringLiteral("files");
const QString kBackups = QStringLiteral("backups");
const QString kTestDrive = QStringLiteral("testDrive");
const QString kPreferences = QStringLiteral("preferences");

constexpr int kBriefly = 3000; // milliseconds
constexpr QSize kLeastSize(960, 660);

// Gives the focus to the first widget of the page that Tab reaches.
void FocusFirst(QWidget& page) {
    for (QWidget* next = page.nextInFocusChain(); next != &page; next = next->nextInFocusChain())
        if (page.isAncestorOf(next) && next->isEnabled() && next->isVisibleTo(&page) &&
            (next->focusPolicy() & Qt::TabFocus) != 0)
            return next->setFocus(Qt::ShortcutFocusReason);
}

} // namespace

MainWindow::MainWindow(Workbench& workbench, const Platform& platform, Language& language)
    : m_workbench(workbench), m_language(language), m_startChoice(workbench.Choice()),
      m_edits(workbench, platform,
              {[this](const QString& question) { return screen.ask(question); },
               [this](const QString& text) {
                   if (QWidget* editor = QApplication::activeModalWidget())
                       QMessageBox::information(editor, windowTitle(), text);
                   else
                       Tell(text);
               },
               [this](const QString& text) {
                   QMessageBox::information(QApplication::activeModalWidget(), tr("Help"), text);
               }}),
      m_documents(new DocumentMenu(workbench, this)),
      m_transfers(new app::Transfers(workbench, *m_documents, this)),
      m_sheets(new SheetMenu(workbench, this)) {
    screen.ask = [this](const QString& question) {
        return QMessageBox::question(this, windowTitle(), question) == QMessageBox::Yes;
    };
    screen.warn = [this](const QString& text) { QMessageBox::warning(this, windowTitle(), text); };
    setObjectName(QStringLiteral("mainWindow"));
    setAcceptDrops(true);
    connect(m_documents, &DocumentMenu::Told, this, &MainWindow::Tell);
    connect(m_documents, &DocumentMenu::SavedByItself, this,
            [this](const QString& text) { statusBar()->showMessage(text, kBriefly); });
    connect(m_documents, &DocumentMenu::Failed, this, &MainWindow::Warn);
    connect(m_sheets, &SheetMenu::Done, this, &MainWindow::TellDone);
    connect(m_sheets, &SheetMenu::Failed, this, &MainWindow::Warn);
    connect(m_transfers, &Transfers::Done, this, &MainWindow::TellDone);
    connect(m_transfers, &Transfers::Told, this, &MainWindow::Tell);
    connect(m_transfers, &Transfers::Failed, this, &MainWindow::Warn);
    connect(m_transfers, &Transfers::PlaceChosen, this, &MainWindow::GoTo);
    connect(m_transfers, &Transfers::Written, this, [this] {
        if (m_workbench.Simulated() != nullptr && m_workbench.Preferences().AutoTestdrive())
            ShowPage(kTestDrive);
    });
    connect(&workbench, &Workbench::KeyboardChanged, this, &MainWindow::ShowKeyboard);
    connect(&workbench, &Workbench::DocumentChanged, this, &MainWindow::ShowDocument);
    connect(&workbench, &Workbench::Progressed, this, &MainWindow::ShowProgress);
    connect(&workbench, &Workbench::Noticed, this, &MainWindow::Tell);
    SwitchLanguage();
    setMinimumSize(kLeastSize); // below it the pages are crowded
    RestorePlace(*this, workbench.Preferences());
    qApp->installEventFilter(this);
}

MainWindow::~MainWindow() = default;

// Everything that has texts is made anew in the present language.
void MainWindow::SwitchLanguage() {
    m_shownLanguage = m_workbench.Preferences().PreferedAppLang();
    m_language.Switch(m_shownLanguage);
    const QString page = m_list != nullptr && m_list->currentItem() != nullptr
                             ? m_list->currentItem()->data(kPageIdRole).toString()
                             : kOverview;
    m_workbench.Quietly([this] {
        m_workbench.Configuration().SetWords(SettingWord);
        TranslateControls(m_workbench.Configuration());
    });
    m_edits.Reload();
    menuBar()->clear();
    for (QToolBar* bar : findChildren<QToolBar*>())
        delete bar;
    for (QAction* action : actions())
        removeAction(action);
    setStatusBar(nullptr);
    MakePages();
    MakeActions();
    MakeStatusBar();
    ShowKeyboard();
    ShowDocument();
    ShowPage(page);
}

void MainWindow::MakeActions() {
    QMenu* document = menuBar()->addMenu(tr("&Document"));
    m_documents->Fill(*document);
    document->addSeparator();
    m_sheets->Fill(*document);
    document->addSeparator();
    document->addAction(tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), this, &QWidget::close);

    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    m_undo = edit->addAction(style()->standardIcon(QStyle::SP_ArrowBack), tr("&Undo"),
                             QKeySequence(Qt::CTRL | Qt::Key_Z), &m_workbench, &Workbench::Undo);
    m_redo = edit->addAction(style()->standardIcon(QStyle::SP_ArrowForward), tr("&Redo"),
                             QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), &m_workbench,
                             &Workbench::Redo);
    edit->addSeparator();

    QMenu* keyboard = menuBar()->addMenu(tr("&Keyboard"));
    m_read =
        keyboard->addAction(style()->standardIcon(QStyle::SP_ArrowUp), tr("&Read from keyboard"),
                            QKeySequence(Qt::CTRL | Qt::Key_R), m_transfers, &Transfers::Read);
    m_read->setToolTip(tr("Keyboard to document: read all settings (Ctrl+R)"));
    m_write = keyboard->addAction(
        style()->standardIcon(QStyle::SP_ArrowDown), tr("&Write to keyboard"),
        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_W), m_transfers, &Transfers::Write);
    m_write->setToolTip(tr("Document to keyboard: review, write, read back (Ctrl+Shift+W)"));
    keyboard->addSeparator();
    keyboard->addAction(tr("&Connect again"), this, [this] { Connect(m_workbench.Choice()); });
    keyboard->addAction(tr("Use a &driver library…"), this, &MainWindow::ChooseDriver);
    keyboard->addAction(tr("Use the &simulated keyboard"), this, [this] { ConnectSimulated(); });

    QMenu* go = menuBar()->addMenu(tr("&Go"));
    for (int row = 0; row < m_list->count(); ++row) {
        const QString id = m_list->item(row)->data(kPageIdRole).toString();
        QAction* action = go->addAction(m_list->item(row)->text(), this, [this, id] {
            ShowPage(id);
            FocusFirst(*m_pages->currentWidget());
        });
        if (row < 10)
            action->setShortcut(
                QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_0 + (row + 1) % 10)));
    }
    auto* about = menuBar()->addMenu(tr("&Help"));
    about->addAction(tr("&About"), this, [this] {
        QMessageBox::about(this, tr("About"),
                           tr("QXControls %1: programs modular point-of-sale keyboards.")
                               .arg(QApplication::applicationVersion()));
    });

    QToolBar* bar = addToolBar(tr("Main"));
    bar->setObjectName(QStringLiteral("mainToolBar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->addAction(m_read);
    bar->addAction(m_write);
    bar->addSeparator();
    m_documents->OpenAction()->setIcon(style()->standardIcon(QStyle::SP_DialogOpenButton));
    m_documents->SaveAction()->setIcon(style()->standardIcon(QStyle::SP_DialogSaveButton));
    bar->addAction(m_documents->OpenAction());
    bar->addAction(m_documents->SaveAction());
    bar->addSeparator();
    bar->addAction(m_undo);
    bar->addAction(m_redo);
    edit->addAction(tr("&Find"), QKeySequence(Qt::CTRL | Qt::Key_K), m_find, [this] {
        m_find->setFocus(Qt::ShortcutFocusReason);
        m_find->selectAll();
    });
}

void MainWindow::MakeStatusBar() {
    m_keyboard = new QLabel;
    m_keyboard->setObjectName(QStringLiteral("lblKeyboard"));
    m_progress = new QProgressBar;
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setMaximumWidth(220);
    m_progress->hide();
    statusBar()->addWidget(m_keyboard, 1);
    statusBar()->addPermanentWidget(m_progress);
}

void MainWindow::AddPage(const QString& id, const QString& title, std::function<QWidget*()> make) {
    auto* item = new QListWidgetItem(title, m_list);
    item->setData(kPageIdRole, id);
    item->setSizeHint(QSize(0, m_list->fontMetrics().height() + 10));
    m_pageList.push_back({std::move(make), nullptr});
}

// A page is made when it is first asked for: most starts need few of them.
QWidget* MainWindow::PageAt(int row) {
    Page& page = m_pageList[static_cast<std::size_t>(row)];
    if (page.widget == nullptr) {
        page.widget = page.make();
        m_pages->addWidget(page.widget);
    }
    return page.widget;
}

int MainWindow::RowOf(const QString& id) const {
    for (int row = 0; row < m_list->count(); ++row)
        if (m_list->item(row)->data(kPageIdRole).toString() == id)
            return row;
    return -1;
}

void MainWindow::MakePages() {
    auto* central = new QWidget;
    m_list = new QListWidget;
    m_list->setObjectName(QStringLiteral("pages"));
    m_list->setAccessibleName(tr("Pages"));
    m_list->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    m_find = new QuickFind([this] { return Findables(); });
    m_pages = new QStackedWidget;
    m_notice = new NoticeBar;
    m_pageList.clear();

    AddPage(kOverview, tr("Overview"), [this] { return MakeOverview(); });
    for (const auto& section : m_workbench.Configuration().Sections()) {
        const std::string key(section->Info().key);
        AddPage(ToQt(key), SectionTitle(key),
                [this, key] { return new ModulePage(m_workbench, key); });
    }
    AddPage(kFiles, tr("Keyboard files"), [this] {
        auto* files = new FilesPage(m_workbench);
        connect(files, &FilesPage::Told, this, &MainWindow::Tell);
        connect(files, &FilesPage::Failed, this, &MainWindow::Warn);
        return TitledPage(tr("Keyboard files"), files);
    });
    AddPage(kBackups, tr("Backups"), [this] {
        auto* backups = new BackupsPage(m_workbench);
        connect(backups, &BackupsPage::RestoreRequested, m_transfers, &Transfers::Restore);
        connect(backups, &BackupsPage::OpenRequested, m_documents, &DocumentMenu::OpenCopy);
        connect(backups, &BackupsPage::Failed, this, &MainWindow::Warn);
        return TitledPage(tr("Backups"), backups);
    });
    AddPage(kTestDrive, tr("Test drive"),
            [this] { return TitledPage(tr("Test drive"), new TestDrivePage(m_workbench)); });
    AddPage(kPreferences, tr("Preferences"), [this] {
        auto* preferences =
            new PreferencesPage(m_workbench.Preferences(), m_workbench.LayoutFolder());
        connect(preferences, &PreferencesPage::Changed, this, &MainWindow::ApplyPreferences);
        return TitledPage(tr("Preferences"), preferences);
    });

    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0)
            m_pages->setCurrentWidget(PageAt(row));
    });
    auto* right = new QVBoxLayout;
    right->addWidget(m_notice);
    right->addWidget(m_pages, 1);
    auto* left = new QVBoxLayout;
    left->addWidget(m_find);
    left->addWidget(m_list, 1);
    auto* row = new QHBoxLayout(central);
    row->addLayout(left);
    row->addLayout(right, 1);
    setCentralWidget(central);
    if (isVisible())
        central->show(); // in a window that is shown already, nothing else does it
}

QWidget* MainWindow::MakeOverview() {
    auto* overview = new OverviewPage(m_workbench);
    overview->ShowFailure(m_failure);
    connect(this, &MainWindow::ConnectionFailed, overview, &OverviewPage::ShowFailure);
    connect(overview, &OverviewPage::ConnectAgainRequested, this,
            [this] { Connect(m_workbench.Choice()); });
    connect(overview, &OverviewPage::SimulatedKeyboardRequested, this,
            &MainWindow::ConnectSimulated);
    return TitledPage(tr("Overview"), overview);
}

void MainWindow::ShowPage(const QString& id) {
    if (const int row = RowOf(id); row >= 0)
        m_list->setCurrentRow(row);
}

void MainWindow::GoTo(const std::string& place) {
    ShowPage(ToQt(SectionOfPlace(place)));
    m_workbench.Quietly([&] { ShowPlace(m_workbench, place); });
    FocusFirst(*m_pages->currentWidget());
}

QString MainWindow::Notice() const {
    return m_notice->Text();
}

void MainWindow::Tell(const QString& text) {
    m_notice->Tell(NoticeBar::Kind::Information, text);
}

void MainWindow::TellDone(const QString& text) {
    m_notice->Tell(NoticeBar::Kind::Success, text);
}

void MainWindow::Warn(const QString& text) {
    m_notice->Tell(NoticeBar::Kind::Warning, text);
    screen.warn(text);
}

bool MainWindow::Connect(const setup::KeyboardChoice& choice) {
    try {
        m_workbench.Connect(choice);
    } catch (const std::exception& error) {
        m_failure = ErrorText(error);
        emit ConnectionFailed(m_failure);
        ShowPage(kOverview);
        return false;
    }
    m_failure.clear();
    m_edits.Reload();
    if (!m_workbench.DriverNote().isEmpty())
        statusBar()->setToolTip(m_workbench.DriverNote());
    m_transfers->Recover();
    return true;
}

// The one that the program was started with, where it was.
void MainWindow::ConnectSimulated() {
    setup::KeyboardChoice choice = m_startChoice;
    if (!choice.driver.empty())
        choice = {};
    Connect(choice);
}

void MainWindow::ChooseDriver() {
#ifdef _WIN32
    const QString libraries = tr("Driver libraries (*.dll)");
#else
    const QString libraries = tr("Driver libraries (*.so)");
#endif
    const QString file =
        QFileDialog::getOpenFileName(this, tr("Use a driver library"), {}, libraries);
    if (!file.isEmpty())
        Connect({ToPath(file), {}, {}});
}

// A keyboard tells its program's version in four characters, "P100" say; the preference has the
// number that the last three spell in hexadecimal: 256 for version 1.00.
QString MainWindow::FirmwareFault() const {
    const QXProgSettings& preferences = m_workbench.Preferences();
    const QString program = ToQt(m_workbench.Session().Access().Program());
    bool isNumber = false;
    const int version = program.right(3).toInt(&isNumber, 16);
    const int wanted = preferences.VersionFirmware();
    if (!preferences.VerifyFirmware() || !isNumber || version >= wanted)
        return {};
    return tr("The keyboard's program %1 is older than the version %2 that the preferences ask "
              "for. A newer program can be loaded on the page of the keyboard's files.")
        .arg(program, QString::number(wanted, 16));
}

void MainWindow::ShowKeyboard() {
    const bool isConnected = m_workbench.IsConnected();
    m_read->setEnabled(isConnected);
    m_write->setEnabled(isConnected);
    if (isConnected) {
        const QXKeyboardAccess& access = m_workbench.Session().Access();
        QString text =
            tr("%1 — program %2, bootloader %3")
                .arg(ToQt(access.Keyboard()), ToQt(access.Program()), ToQt(access.Bootloader()));
        if (m_workbench.Simulated() != nullptr)
            text += QStringLiteral(" — ") + tr("simulated keyboard");
        const QString fault = FirmwareFault();
        if (!fault.isEmpty())
            text += QStringLiteral(" — ⚠ ") + tr("program too old");
        m_keyboard->setText(text);
        m_keyboard->setToolTip(fault);
        m_keyboard->setAccessibleDescription(fault);
    } else {
        m_keyboard->setText(tr("No keyboard"));
    }
    int width = 0;
    for (int row = 0; row < m_list->count(); ++row) {
        QListWidgetItem* item = m_list->item(row);
        const QString id = item->data(kPageIdRole).toString();
        if (const host::Section* section = m_workbench.Configuration().Find(id.toStdString())) {
            const bool isThere = m_workbench.Has(*section);
            const QString title = SectionTitle(id.toStdString());
            item->setText(isThere ? title : tr("%1 (absent)").arg(title));
            item->setForeground(
                palette().brush(isThere ? QPalette::Active : QPalette::Disabled, QPalette::Text));
        }
        width = std::max(width, m_list->fontMetrics().horizontalAdvance(item->text()));
    }
    width += 2 * m_list->frameWidth() + 24;
    const QFontMetrics metrics = m_find->fontMetrics();
    width = std::max(width, metrics.horizontalAdvance(m_find->placeholderText()) + 24);
    m_list->setFixedWidth(width);
    m_find->setFixedWidth(width);
}

void MainWindow::ShowDocument() {
    const host::History& history = m_workbench.History();
    m_undo->setEnabled(history.CanUndo());
    m_redo->setEnabled(history.CanRedo());
    const QString undo =
        history.CanUndo() ? tr("Undo: set %1").arg(ToQt(history.UndoName())) : tr("Undo");
    const QString redo =
        history.CanRedo() ? tr("Redo: set %1").arg(ToQt(history.RedoName())) : tr("Redo");
    m_undo->setText(undo);
    m_undo->setIconText(tr("Undo"));
    m_undo->setToolTip(undo);
    m_redo->setText(redo);
    m_redo->setIconText(tr("Redo"));
    m_redo->setToolTip(redo);
    setWindowTitle(QStringLiteral("%1[*] — QXControls").arg(m_documents->DocumentName()));
    setWindowModified(m_workbench.IsModified());
}

void MainWindow::ShowProgress(int percent) {
    m_progress->setVisible(percent < 100);
    m_progress->setValue(percent);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void MainWindow::ApplyPreferences() {
    m_workbench.SavePreferences();
    m_workbench.ReloadPreferences();
    m_edits.Reload();
    if (m_workbench.Preferences().PreferedAppLang() != m_shownLanguage)
        QMetaObject::invokeMethod(this, &MainWindow::SwitchLanguage, Qt::QueuedConnection);
}

std::vector<Findable> MainWindow::Findables() {
    std::vector<Findable> all;
    for (int row = 0; row < m_list->count(); ++row) {
        const QString id = m_list->item(row)->data(kPageIdRole).toString();
        all.push_back({m_list->item(row)->text(), tr("page"), [this, id] { ShowPage(id); }});
    }
    for (const host::Setting& setting :
         m_workbench.Configuration().List(m_workbench.History().AllSections()))
        all.push_back({ToQt(setting.name), ToQt(setting.value),
                       [this, place = setting.place] { GoTo(place); }});
    auto* preferences = PageAt(RowOf(kPreferences))->findChild<PreferencesPage*>();
    for (const auto& [preference, label] : preferences->Labels())
        all.push_back({label, tr("Preferences"), [this, preferences, preference = preference] {
                           ShowPage(kPreferences);
                           preferences->Reveal(preference);
                       }});
    for (const FindableKey& key : AllKeys(m_workbench))
        all.push_back({key.name, {}, [this, place = key.place] { GoTo(place); }});
    return all;
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    // What the user does after letting a widget go is a step of its own.
    if (event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::FocusOut)
        m_workbench.History().Seal();
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls() && event->mimeData()->urls().front().isLocalFile())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    m_documents->Open(event->mimeData()->urls().front().toLocalFile());
    event->acceptProposedAction();
}

void MainWindow::paintEvent(QPaintEvent* event) {
    QMainWindow::paintEvent(event);
    if (!std::exchange(m_isPainted, true))
        QMetaObject::invokeMethod(this, &MainWindow::Appeared, Qt::QueuedConnection);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!m_documents->MayLeaveDocument()) {
        event->ignore();
        return;
    }
    KeepPlace(*this, m_workbench.Preferences());
    m_workbench.SavePreferences();
    m_workbench.Disconnect();
    event->accept();
}

} // namespace qx::app
