#include "app/WindowPages.h"

#include "app/BackupsPage.h"
#include "app/ColourFollower.h"
#include "app/DocumentMenu.h"
#include "app/FilesPage.h"
#include "app/FindableSettings.h"
#include "app/KeyboardMenu.h"
#include "app/OverviewPage.h"
#include "app/Pages.h"
#include "app/PreferencesPage.h"
#include "app/SettingWords.h"
#include "app/TestDrivePage.h"
#include "app/Transfers.h"
#include "app/Workbench.h"
#include "app/sections/SectionFace.h"
#include "views/Bindings.h"
#include "views/KeyGrid.h"
#include "views/LineIcon.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QRegularExpression>

#include <functional>
#include <iterator>
#include <set>
#include <utility>

namespace qx::app {

using views::ToQt;

namespace {

constexpr int kNumberedPages = 10;

// Its text without the mark of its letter.
QString NameOf(const QAction& action) {
    QString name = action.text();
    return name.remove(QRegularExpression(QStringLiteral("&(?!&)")));
}

} // namespace

WindowPages::WindowPages(const Partners& partners, QObject* parent)
    : QObject(parent), m_partners(partners) {
    connect(new ColourFollower(partners.workbench, this), &ColourFollower::Turned, this,
            &WindowPages::AppearanceChanged);
}

QWidget* WindowPages::Make(QWidget* notices) {
    m_find = new QuickFind([this] { return Findables(); });
    m_book = new PageBook(m_find, notices);
    connect(m_book, &PageBook::Shown, this, &WindowPages::Shown);

    const auto icon = [](const char* name) { return views::LineIcon(QString::fromLatin1(name)); };
    Workbench& workbench = m_partners.workbench;
    auto group = PageGroup::Device;
    m_book->AddHeading(TitleOf(group));
    m_book->Add(kOverview, tr("Overview"), icon("keyboard"), [this] { return MakeOverview(); });
    for (const std::string& key : SectionsByGroup()) {
        if (std::exchange(group, GroupOf(key)) != group)
            m_book->AddHeading(TitleOf(group));
        m_book->Add(ToQt(key), SectionTitle(key), SectionIcon(key), [this, key] {
            return new ModulePage(m_partners.workbench, m_partners.edits, m_partners.state, key);
        });
    }
    m_book->AddHeading(TitleOf(PageGroup::Tools));
    m_book->Add(kFiles, tr("Keyboard files"), icon("files"), [this] { return MakeFiles(); });
    m_book->Add(kBackups, tr("Backups"), icon("backups"), [this] { return MakeBackups(); });
    m_book->Add(kTestDrive, tr("Test"), icon("test"),
                [&workbench] { return TitledPage(tr("Test"), new TestDrivePage(workbench)); });
    m_book->Add(kPreferences, tr("Preferences"), icon("preferences"),
                [this] { return MakePreferences(); });
    return m_book;
}

QWidget* WindowPages::MakeOverview() {
    KeyboardMenu* keyboards = &m_partners.keyboards;
    auto* overview = new OverviewPage(
        m_partners.workbench, m_partners.state,
        {keyboards->ReadAction(), keyboards->WriteAction(), keyboards->ResolveAction()});
    overview->ShowFailure(keyboards->FailureToConnect());
    connect(keyboards, &KeyboardMenu::ConnectionFailed, overview, &OverviewPage::ShowFailure);
    connect(overview, &OverviewPage::ConnectAgainRequested, keyboards, &KeyboardMenu::ConnectAgain);
    connect(overview, &OverviewPage::SimulatedKeyboardRequested, keyboards,
            &KeyboardMenu::ConnectSimulated);
    connect(overview, &OverviewPage::PlaceChosen, this, &WindowPages::PlaceChosen);
    connect(overview, &OverviewPage::PageRequested, this, [this](const QString& id) {
        Show(id);
        FocusPage();
    });
    return TitledPage(tr("Overview"), overview);
}

QWidget* WindowPages::MakeFiles() {
    auto* files = new FilesPage(m_partners.workbench);
    connect(files, &FilesPage::Reported, this, &WindowPages::Reported);
    connect(files, &FilesPage::Stopped, this, &WindowPages::Stopped);
    connect(files, &FilesPage::Failed, this, &WindowPages::Failed);
    return TitledPage(tr("Keyboard files"), files);
}

QWidget* WindowPages::MakeBackups() {
    auto* backups = new BackupsPage(m_partners.workbench);
    connect(backups, &BackupsPage::RestoreRequested, &m_partners.transfers, &Transfers::Restore);
    connect(backups, &BackupsPage::OpenRequested, &m_partners.documents, &DocumentMenu::OpenCopy);
    connect(backups, &BackupsPage::PlaceChosen, this, &WindowPages::PlaceChosen);
    connect(backups, &BackupsPage::Failed, this, &WindowPages::Failed);
    return TitledPage(tr("Backups"), backups);
}

QWidget* WindowPages::MakePreferences() {
    Workbench& workbench = m_partners.workbench;
    auto* preferences = new PreferencesPage(workbench.Preferences(), workbench.LayoutFolder());
    preferences->ShowAppearance(workbench.Appearance());
    const auto showLayout = [preferences, &workbench] {
        preferences->ShowOwnLayout(
            workbench.OwnLayout().empty() ? QString() : ToQt(workbench.Layout().NativeName()));
    };
    showLayout();
    connect(&workbench, &Workbench::LayoutChanged, preferences, showLayout);
    connect(preferences, &PreferencesPage::Changed, this, &WindowPages::PreferencesChanged);
    connect(preferences, &PreferencesPage::AppearanceChosen, this, [this](Appearance chosen) {
        m_partners.workbench.SetAppearance(chosen);
        emit AppearanceChanged();
    });
    return TitledPage(tr("Preferences"), preferences);
}

void WindowPages::Show(const QString& id) {
    m_book->Show(id);
}

void WindowPages::FocusPage() {
    m_book->FocusPage();
}

WindowPages::Spot WindowPages::Current() const {
    if (m_book == nullptr)
        return {};
    const auto* preferences = m_book->findChild<PreferencesPage*>();
    return {m_book->Current(), preferences != nullptr ? preferences->CurrentTab() : 0,
            m_book->TypedTexts()};
}

void WindowPages::ShowAgain(const Spot& spot) {
    m_book->KeepTexts(spot.texts);
    Show(spot.page);
    if (spot.page == kPreferences)
        m_book->Page(kPreferences)->findChild<PreferencesPage*>()->ShowTab(spot.tab);
}

void WindowPages::ShowKeyboard(QMenu& go) {
    for (const auto& section : m_partners.workbench.Configuration().Sections())
        m_book->SetPresent(ToQt(std::string(section->Info().key)),
                           m_partners.workbench.Has(*section));
    m_book->FitList();
    FillMenu(go);
}

void WindowPages::ShowCounts() {
    for (const auto& section : m_partners.workbench.Configuration().Sections()) {
        const std::string_view key = section->Info().key;
        const bool isInDocument = m_partners.workbench.History().TakesPart(*section);
        m_book->SetCount(ToQt(std::string(key)),
                         isInDocument ? m_partners.workbench.Faces().Of(key).CountProgrammed() : 0);
    }
}

// The first pages that the keyboard has something for have the digits under Alt.
void WindowPages::FillMenu(QMenu& go) {
    go.clear();
    int number = 0;
    for (const PageBook::Listed& page : m_book->Pages()) {
        QAction* action = go.addAction(page.title, this, [this, id = page.id] {
            Show(id);
            FocusPage();
        });
        if (page.isPresent && ++number <= kNumberedPages)
            action->setShortcut(
                QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_0 + number % kNumberedPages)));
    }
}

void WindowPages::ShowKeyActions(QMenu& menu, QAction* before) {
    const QList<QAction*> all = menu.actions();
    for (QAction* action : all.mid(all.indexOf(before) + 1))
        menu.removeAction(action);
    for (const auto* grid : m_book->findChildren<views::KeyGrid*>())
        if (grid->isVisible() && grid->isEnabled() && grid->Selects())
            menu.addActions(grid->actions());
}

void WindowPages::StartSearch() {
    m_find->setFocus(Qt::ShortcutFocusReason);
    m_find->selectAll();
}

std::vector<Findable> WindowPages::Findables() {
    std::vector<Findable> all = Actions();
    for (const PageBook::Listed& page : m_book->Pages())
        all.push_back({Findable::Group::Pages, page.title, {}, [this, id = page.id] {
                           Show(id);
                           FocusPage();
                       }});
    std::vector<Findable> settings = FindableSettings(
        m_partners.workbench, [this](const std::string& place) { emit PlaceChosen(place); });
    std::move(settings.begin(), settings.end(), std::back_inserter(all));
    auto* preferences = m_book->Page(kPreferences)->findChild<PreferencesPage*>();
    for (const auto& [preference, label] : preferences->Labels())
        all.push_back({Findable::Group::Settings,
                       tr("Preferences") + QStringLiteral(" › ") + label,
                       {},
                       [this, preferences, preference = preference] {
                           Show(kPreferences);
                           preferences->Reveal(preference);
                       }});
    return all;
}

// The entries that the menus would have if they were opened now, without the pages, which are a
// separate group. The name of an entry of a submenu includes that of the submenu: "Swap with
// layer › 4".
std::vector<Findable> WindowPages::Actions() {
    std::vector<Findable> all;
    std::set<QString> known;
    for (const PageBook::Listed& page : m_book->Pages())
        known.insert(page.title);
    const std::function<void(QMenu&, const QString&, const QString&)> add =
        [&](QMenu& menu, const QString& where, const QString& before) {
            emit menu.aboutToShow(); // some menus are filled only then
            for (QAction* action : menu.actions()) {
                const QString name = before + NameOf(*action);
                if (!action->isEnabled() || !action->isVisible() || action->isSeparator())
                    continue;
                if (action->menu() != nullptr)
                    add(*action->menu(), where, NameOf(*action) + QStringLiteral(" › "));
                else if (!name.isEmpty() && known.insert(name).second)
                    all.push_back({Findable::Group::Actions, name, where,
                                   [action = QPointer<QAction>(action)] {
                                       if (action != nullptr)
                                           action->trigger();
                                   },
                                   action->shortcut().toString(QKeySequence::NativeText)});
            }
        };
    if (const auto* window = qobject_cast<QMainWindow*>(m_book->window()))
        for (const QAction* menu : window->menuBar()->actions())
            add(*menu->menu(), tr("%1 menu").arg(NameOf(*menu)), {});
    return all;
}

} // namespace qx::app
