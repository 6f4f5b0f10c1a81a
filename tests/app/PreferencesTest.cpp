#include "Desk.h"
#include "app/Appearance.h"
#include "app/ColourButton.h"
#include "app/PreferencesPage.h"
#include "app/StartWizard.h"
#include "qxcontrols/platform/RegistryAccess.h"
#include "support/TempFolder.h"
#include "support/Widgets.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QSpinBox>
#include <QTimer>

#include <fstream>
#include <iterator>
#include <optional>
#include <set>

namespace qx::test {
namespace {

using app::StartChoice;

// Runs an action in the next dialog.
template <typename Dialog>
void AnswerNext(const std::function<void(Dialog&)>& answer) {
    QTimer::singleShot(0, [answer] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        answer(*dialog);
    });
}

struct PreferencesTest : testing::Test {
    PreferencesTest() {
        settings.Load();
        page.ShowAll();
        page.resize(800, 600);
        page.show();
        QObject::connect(&page, &app::PreferencesPage::Changed, &page, [this] { ++changed; });
    }

    MemoryRegistry registry;
    QXProgSettings settings{registry};
    app::PreferencesPage page{settings, QX_LAYOUTS};
    int changed = 0;
};

// Changes the editor as a user would; -1 and 0 for Booleans, otherwise the next value.
void ChangeByKeys(QWidget* editor) {
    if (auto* box = qobject_cast<QCheckBox*>(editor))
        QTest::keyClick(box, Qt::Key_Space);
    else if (auto* colour = qobject_cast<app::ColourButton*>(editor)) {
        AnswerNext<QColorDialog>([](QColorDialog& dialog) {
            dialog.setCurrentColor(QColor(0x12, 0x34, 0x56));
            dialog.accept();
        });
        QTest::keyClick(colour, Qt::Key_Space);
    } else
        QTest::keyClick(editor, qobject_cast<QComboBox*>(editor) ? Qt::Key_Down : Qt::Key_Up);
}

TEST_F(PreferencesTest, EveryPreferenceIsEditedAndSaved) {
    std::set<std::string> edited;
    for (const PreferenceInfo& info : Preferences()) {
        const bool isText = info.type == PreferenceType::String;
        const bool isStart = info.id == Preference::ShowStartupWizard ||
                             info.id == Preference::ShowStartupAction ||
                             info.id == Preference::NewDocumentOnStartup; // one editor, see below
        if (info.storage == PreferenceStorage::Window || isText || isStart)
            continue;
        const QXProgSettings::Value before = settings.Get(info.property);
        page.Reveal(info.id);
        QWidget* editor = Find<QWidget>(page, std::string(info.property).c_str());
        EXPECT_TRUE(editor->isVisible()) << info.property; // its tab is in front
        changed = 0;
        ChangeByKeys(editor);
        EXPECT_NE(settings.Get(info.property), before) << info.property;
        EXPECT_EQ(changed, 1) << info.property;
        if (info.type == PreferenceType::Colour) {
            EXPECT_EQ(std::get<Long>(settings.Get(info.property)), 0x563412) << info.property;
        }
        edited.emplace(info.property);
    }
    EXPECT_EQ(edited.size(),
              kPreferenceCount - 5 - 2 - 3); // all except the window's, texts and the start
    settings.Save();
    QXProgSettings stored(registry);
    stored.Load();
    for (const std::string& property : edited)
        EXPECT_EQ(stored.Get(property), settings.Get(property)) << property;
}

TEST_F(PreferencesTest, KeepsValuesThatItCannotOffer) {
    settings.SetPreferedAppLang(1036);
    settings.SetVersionFirmware(-32768);
    settings.SetKeyFontSize(72);
    page.ShowAll();
    EXPECT_EQ(changed, 0);
    EXPECT_EQ(Find<QComboBox>(page, "PreferedAppLang")->currentData().toInt(), 1036);
    EXPECT_EQ(Find<QSpinBox>(page, "VersionFirmware")->value(), -32768);
    QTest::keyClick(Find<QWidget>(page, "KeyFontSize"), Qt::Key_Down);
    EXPECT_EQ(settings.KeyFontSize(), 71);
    EXPECT_EQ(settings.PreferedAppLang(), 1036);
    auto* layouts = Find<QComboBox>(page, "PreferedKeyLang");
    ASSERT_EQ(layouts->count(), 6); // five layouts and "none"
    layouts->setCurrentIndex(layouts->findData(1031));
    EXPECT_EQ(settings.PreferedKeyLang(), 1031);
}

// As in every program: the layout of the command line, or else the keyboard's, or else the
// preferred one.
TEST(Preferences, TheKeyLayoutIsThatOfTheNearest) {
    Desk desk;
    const auto layout = [](app::Workbench& workbench) {
        workbench.Preferences().SetPreferedKeyLang(1031);
        workbench.ReloadPreferences();
        return workbench.Layout().NativeName();
    };
    desk.Page("preferences");
    const auto explanation = [&] { return desk.window->findChild<QLabel*>("ownLayout")->text(); };
    EXPECT_EQ(layout(desk.workbench), "English (United States)") << "the keyboard's own";
    EXPECT_EQ(explanation(), "The connected keyboard has its own layout: English (United States).");
    desk.workbench.Disconnect();
    EXPECT_EQ(layout(desk.workbench), "Deutsch (Deutschland)");
    EXPECT_EQ(explanation(), "A keyboard that has its own layout is shown with that one.");
    app::Workbench chosen(desk.platform.Services(),
                          {{}, QX_LAYOUTS, "french.qxl", desk.folder / "other.ini", desk.folder});
    EXPECT_EQ(layout(chosen), "Français (France)");
}

TEST_F(PreferencesTest, ASystemColourStaysUnlessAnotherIsChosen) {
    const Long lFace = settings.ColorUnused();
    ASSERT_LT(lFace, 0);
    page.Reveal(Preference::ColorUnused);
    auto* button = Find<app::ColourButton>(page, "ColorUnused");
    AnswerNext<QColorDialog>([](QColorDialog& dialog) { dialog.accept(); });
    Click(page, "ColorUnused");
    AnswerNext<QColorDialog>([](QColorDialog& dialog) {
        dialog.setCurrentColor(Qt::red);
        dialog.reject();
    });
    Click(page, "ColorUnused");
    EXPECT_EQ(settings.ColorUnused(), lFace);
    EXPECT_EQ(changed, 0);
    AnswerNext<QColorDialog>([](QColorDialog& dialog) {
        dialog.setCurrentColor(QColor(1, 2, 3));
        dialog.accept();
    });
    Click(page, "ColorUnused");
    EXPECT_EQ(settings.ColorUnused(), 0x030201);
    ASSERT_EQ(button->actions().size(), 1);
    button->actions().front()->trigger();
    EXPECT_EQ(settings.ColorUnused(), lFace);
    EXPECT_EQ(changed, 2);
}

TEST_F(PreferencesTest, ResetsAfterAskingAndForgetsTheLastDocument) {
    settings.SetPosCodePage("cp850.bin");
    settings.SetChipcardPort(7);
    settings.SetLastDownloadFile("till.qxc");
    page.ShowAll();
    page.Reveal(Preference::PosCodePage);
    auto* file = Find<QLineEdit>(page, "PosCodePage");
    file->selectAll();
    QTest::keyClicks(file, "cp437.bin");
    EXPECT_EQ(changed, 0); // not before the name is complete
    QTest::keyClick(file, Qt::Key_Return);
    EXPECT_EQ(settings.PosCodePage(), "cp437.bin");
    EXPECT_EQ(changed, 1);

    AnswerNext<QMessageBox>([](QMessageBox& box) { box.reject(); });
    Click(page, "reset");
    EXPECT_EQ(settings.ChipcardPort(), 7);
    AnswerNext<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::Reset)->click(); });
    Click(page, "reset");
    EXPECT_EQ(settings.ChipcardPort(), 2);
    EXPECT_EQ(host::ColoursInUse(settings), host::ColourSetId::Light);
    EXPECT_EQ(Find<QSpinBox>(page, "ChipcardPort")->value(), 2);
    EXPECT_FALSE(Find<QCheckBox>(page, "AutoSave")->isChecked());
    EXPECT_EQ(settings.PosCodePage(), "cp437.bin");

    page.Reveal(Preference::LastDownloadFile);
    Click(page, "forgetLastDocument");
    EXPECT_EQ(settings.GetLastDownloadFile(), "");
    EXPECT_FALSE(Find<QWidget>(page, "forgetLastDocument")->isEnabled());
}

struct StartWizardTest : testing::Test {
    TempFolder folder;
    MemoryRegistry registry;
    QXProgSettings settings{registry};
};

TEST_F(StartWizardTest, OffersTheLastDocumentOnlyWhenItIsThere) {
    const auto offers = [&] {
        const app::StartWizard wizard(settings, true);
        return Find<QWidget>(wizard, "lastDocument")->isEnabled();
    };
    settings.SetShowStartupAction(static_cast<Integer>(StartChoice::LastDocument));
    EXPECT_FALSE(offers());
    EXPECT_FALSE(IsShown(app::StartWizard(settings, true), "lastDocument")) << "there is none yet";
    const auto file = folder / "till.qxc";
    settings.SetLastDownloadFile(file.string());
    EXPECT_FALSE(offers());
    app::StartWizard gone(settings, true);
    EXPECT_EQ(gone.Choice(), StartChoice::ReadKeyboard);
    EXPECT_TRUE(Find<QWidget>(gone, "lastDocument")->accessibleDescription().contains("till.qxc"));
    std::ofstream(file) << "x";
    EXPECT_TRUE(offers());
    app::StartWizard there(settings, true);
    EXPECT_EQ(there.Choice(), StartChoice::LastDocument);
}

TEST_F(StartWizardTest, OffersNoReadingWithoutAKeyboard) {
    const app::StartWizard none(settings, false);
    EXPECT_FALSE(Find<QWidget>(none, "readKeyboard")->isEnabled());
    EXPECT_EQ(none.Choice(), StartChoice::Defaults);
    std::ofstream(folder / "till.qxc") << "x";
    settings.SetLastDownloadFile((folder / "till.qxc").string());
    const app::StartWizard last(settings, false);
    EXPECT_EQ(last.Choice(), StartChoice::LastDocument);
}

TEST_F(StartWizardTest, RemembersTheChoiceAndWhetherToAsk) {
    for (const auto& [name, choice] : {std::pair("defaults", StartChoice::Defaults),
                                       std::pair("readKeyboard", StartChoice::ReadKeyboard)}) {
        app::StartWizard wizard(settings, true);
        wizard.show();
        Click(wizard, name);
        EXPECT_EQ(wizard.result(), QDialog::Accepted);
        EXPECT_EQ(wizard.Choice(), choice);
        EXPECT_EQ(settings.GetShowStartupAction(), static_cast<Integer>(choice));
    }
    settings.SetNewDocumentOnStartup(false); // as other programs do
    settings.SetLastDownloadFile("till.qxc");
    app::StartWizard wizard(settings, true);
    wizard.show();
    Click(wizard, "ShowStartupWizard");
    QTest::keyClick(&wizard, Qt::Key_Escape);
    EXPECT_EQ(app::StoredStart(settings), StartChoice::LastDocument);
    EXPECT_EQ(wizard.result(), QDialog::Rejected);
    EXPECT_FALSE(settings.GetShowStartupWizard());
    EXPECT_EQ(settings.GetShowStartupAction(), static_cast<Integer>(StartChoice::ReadKeyboard));

    app::PreferencesPage page(settings, QX_LAYOUTS);
    auto* start = Find<QComboBox>(page, "ShowStartupAction");
    for (const std::optional<StartChoice> choice : {std::optional<StartChoice>(),
                                                    {StartChoice::ReadKeyboard},
                                                    {StartChoice::LastDocument},
                                                    {StartChoice::Defaults}}) {
        start->setCurrentIndex(start->findData(choice ? static_cast<int>(*choice) : -1));
        emit start->activated(start->currentIndex());
        EXPECT_EQ(app::StoredStart(settings), choice);
        page.ShowAll();
        EXPECT_EQ(start->currentData().toInt(), choice ? static_cast<int>(*choice) : -1);
    }
    settings.SetShowStartupAction(7); // another program's
    EXPECT_EQ(app::StoredStart(settings), StartChoice::Defaults);
}

TEST(Appearance, IsChangedAtOnceStoredAndFollowedByTheColoursOfTheKeys) {
    using app::Appearance;
    Desk desk;
    const auto isDark = [&] {
        return desk.window->palette().color(QPalette::Window).lightness() < 128;
    };
    host::UseColours(desk.workbench.Preferences(), host::ColourSetId::Light);
    desk.Page("preferences");
    const auto choose = [&](Appearance appearance) {
        auto* box = desk.Find<QComboBox>("appearance");
        const QPointer<QComboBox> old(box);
        box->setCurrentIndex(box->findData(static_cast<int>(appearance)));
        emit box->activated(box->currentIndex());
        EXPECT_TRUE(QTest::qWaitFor([&] { return old == nullptr; })) << "it is made again";
        EXPECT_EQ(desk.Find<QComboBox>("appearance")->currentData().toInt(),
                  static_cast<int>(appearance));
    };
    choose(Appearance::Dark);
    EXPECT_TRUE(isDark());
    EXPECT_EQ(host::ColoursInUse(desk.workbench.Preferences()), host::ColourSetId::Dark);
    {
        app::Workbench other(desk.platform.Services(),
                             {{}, QX_LAYOUTS, {}, desk.folder / "settings.ini", {}});
        EXPECT_EQ(other.Appearance(), Appearance::Dark);
        EXPECT_EQ(host::ColoursInUse(other.Preferences()), host::ColourSetId::Dark);
    }
    {
        // As if the system had turned light since the last start.
        const auto file = desk.folder / "turned.ini";
        std::ifstream stored(desk.folder / "settings.ini");
        std::string text{std::istreambuf_iterator<char>(stored), {}};
        const std::string isDark = "Appearance=2";
        ASSERT_NE(text.find(isDark), std::string::npos) << text;
        text.replace(text.find(isDark), isDark.size(), "Appearance=0");
        std::ofstream(file) << text;
        app::Workbench other(desk.platform.Services(), {{}, QX_LAYOUTS, {}, file, {}});
        other.UseStoredAppearance();
        EXPECT_EQ(host::ColoursInUse(other.Preferences()), host::ColourSetId::Light);
        other.Preferences().SetColorProg(0x123456); // the user's own
        other.UseStoredAppearance();
        EXPECT_EQ(other.Preferences().ColorProg(), 0x123456);
        app::UseAppearance(Appearance::Dark);
    }
    desk.workbench.Preferences().SetColorProg(0x123456);
    choose(Appearance::Light);
    EXPECT_FALSE(isDark());
    EXPECT_EQ(desk.workbench.Preferences().ColorProg(), 0x123456);
    choose(Appearance::System);
    EXPECT_EQ(desk.workbench.Appearance(), Appearance::System);
}

TEST(Appearance, OfTheKeysFollowsASystemThatTurnsDark) {
    Desk desk;
    desk.workbench.SetAppearance(app::Appearance::Light);
    desk.workbench.FitColours();
    const QPalette light = QApplication::palette();
    host::UseColours(desk.workbench.Preferences(), host::ColourSetId::Light);
    desk.Page("preferences");
    const QPointer<QWidget> shown = desk.Find<QComboBox>("appearance");
    {
        QDialog dialog(desk.window.get());
        dialog.setModal(true);
        dialog.show();
        QApplication::setPalette(Qt::black);
        EXPECT_EQ(host::ColoursInUse(desk.workbench.Preferences()), host::ColourSetId::Light)
            << "windows are not made again below a dialog";
    }
    QApplication::setActiveWindow(nullptr);
    QApplication::setActiveWindow(desk.window.get());
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown == nullptr; }));
    EXPECT_EQ(host::ColoursInUse(desk.workbench.Preferences()), host::ColourSetId::Dark);
    QApplication::setPalette(light);
    EXPECT_EQ(host::ColoursInUse(desk.workbench.Preferences()), host::ColourSetId::Light);
}

} // namespace
} // namespace qx::test
