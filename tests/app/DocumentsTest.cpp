// Documents are opened and saved, and never lost.
#include "Desk.h"
#include "files/Files.h"
#include "host/Json.h"

#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSlider>
#include <QUrl>

#include <fstream>

namespace qx::test {
namespace {

TEST(Documents, DocumentsAreSavedOpenedAndNeverLost) {
    Desk desk;
    const std::string file = (desk.folder / "till.json").string();
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(12);
    desk.unsaved = DocumentMenu::Answer::Cancel;
    desk.window->Documents().New();
    EXPECT_TRUE(desk.workbench.IsModified()) << "the user chose to keep the edit";
    desk.Edit("freeProgKeys", 80);
    EXPECT_TRUE(desk.IsShownProgrammed("layoutDisplay", 80));
    EXPECT_TRUE(desk.window->Documents().Save());
    const std::string saved = desk.Document();
    desk.window->Documents().New();
    EXPECT_NE(desk.Document(), saved);
    EXPECT_FALSE(desk.IsShownProgrammed("layoutDisplay", 80));
    desk.window->Documents().Open(QString::fromStdString(file));
    EXPECT_EQ(desk.Document(), saved);
    EXPECT_TRUE(desk.IsShownProgrammed("layoutDisplay", 80));

    // An edit is not replaced by another document or a keyboard without a question.
    desk.workbench.Preferences().SetAutoSave(false);
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(13);
    const std::string edited = desk.Document();
    desk.window->Documents().Open(QString::fromStdString(file));
    desk.window->Documents().OpenCopy(QString::fromStdString(file));
    desk.window->Transfers().Read();
    EXPECT_EQ(desk.Document(), edited);
    // Nor by a failed read, whichever driver call fails.
    desk.unsaved = DocumentMenu::Answer::Discard;
    bool isRead = false;
    for (int call = 1; !isRead; call += 1 + call / 10) {
        ASSERT_LT(call, 100'000);
        desk.warnings.clear();
        desk.workbench.Simulated()->FailCall(call, 77, true);
        desk.window->Transfers().Read();
        desk.workbench.Simulated()->FailCall(0, 0, false);
        isRead = desk.warnings.isEmpty();
        ASSERT_TRUE(isRead || desk.Document() == edited) << call;
    }
    EXPECT_NE(desk.Document(), edited);
    desk.window->Documents().Open(QString::fromStdString(file));
    EXPECT_EQ(desk.Document(), saved);

    // An invalid file changes nothing and is reported with the place of the error.
    std::ofstream(file) << R"({"format": "qx-configuration", "version": 1, "pos": {}})";
    desk.window->Documents().Open(QString::fromStdString(file));
    EXPECT_EQ(desk.Document(), saved);
    ASSERT_FALSE(desk.warnings.isEmpty());
    EXPECT_TRUE(desk.warnings.back().contains(QStringLiteral("/pos")));

    desk.saveAs = "second.json";
    EXPECT_TRUE(desk.window->Documents().SaveAs());
    for (auto* menu : desk.window->findChildren<QMenu*>())
        if (menu->title().contains(QStringLiteral("recent"))) {
            emit menu->aboutToShow();
            ASSERT_EQ(menu->actions().size(), 2);
            EXPECT_TRUE(menu->actions()[0]->text().endsWith(QStringLiteral("second.json")));
            EXPECT_EQ(menu->actions()[1]->text().toStdString(), file);
            return;
        }
    ADD_FAILURE() << "no menu of recent documents";
}

TEST(Documents, PlaceholdersAreRefusedWithTheNextStep) {
    Desk desk;
    const std::string before = desk.Document();
    const std::filesystem::path file = desk.folder / "till.json";
    std::ofstream(file) << R"({"format": "qx-configuration", "version": 1,
        "commonKeyboard": {"outputDelay": "${delay}"}})";
    desk.window->Documents().Open(QString::fromStdString(file.string()));
    EXPECT_TRUE(desk.warnings.join(u' ').contains(QStringLiteral("Replace them in a text editor")))
        << desk.warnings.join(u' ').toStdString();
    EXPECT_EQ(desk.Document(), before);
}

TEST(Documents, ABackupIsOpenedAsACopy) {
    Desk desk;
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    desk.Write();
    desk.unsaved = DocumentMenu::Answer::Discard;
    desk.Page("backups");
    auto* list = desk.Find<QTreeWidget>("backups");
    list->setFocus();
    EXPECT_FALSE(desk.Find<QPushButton>("openBackup")->isEnabled()) << "none is chosen yet";
    list->setCurrentItem(list->topLevelItem(0));
    // It is compared with the document before anything is done with it.
    auto* changes = desk.Find<QTreeWidget>("backupChanges");
    ASSERT_EQ(changes->topLevelItemCount(), 1);
    EXPECT_EQ(changes->topLevelItem(0)->child(0)->text(1), QStringLiteral("9"));
    EXPECT_EQ(changes->topLevelItem(0)->child(0)->text(2), QStringLiteral("6"));
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return list->topLevelItem(0)->text(4) == QStringLiteral("1"); }));
    EXPECT_TRUE(list->isColumnHidden(2)) << "no backup is of a unit";
    desk.UndoAll();
    EXPECT_EQ(changes->topLevelItemCount(), 0) << "the document is what it was then";
    desk.workbench.Redo();
    QTest::keyClick(changes, Qt::Key_Return);
    EXPECT_NO_THROW(desk.Find<QSlider>("slidOutputDelay")) << "its page";
    const host::BackupStore& backups = desk.workbench.Records().backups;
    const host::BackupEntry entry = backups.List().front();
    host::Backup ofUnit = backups.Load(entry);
    ofUnit.till.unit = "till 7";
    backups.Save(ofUnit, host::ConfigurationDocument::Load(entry.document),
                 std::chrono::system_clock::now(), {});
    desk.Page("backups");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !list->isColumnHidden(2); }));
    desk.Click("openBackup");
    EXPECT_TRUE(desk.workbench.File().empty()) << "an edit must not change the backup";
    EXPECT_TRUE(desk.workbench.IsModified());
    desk.Page("commonKeyboard");
    EXPECT_EQ(desk.Find<QSlider>("slidOutputDelay")->value(), 6);
}

TEST(Documents, SavesByItselfOnlyWhereItMay) {
    Desk desk;
    const auto held = [&] {
        return host::Json::parse(
            files::ReadFile(desk.folder / "till.json"))["commonKeyboard"]["outputDelay"];
    };
    const auto edit = [&](int delay) {
        desk.Find<QSlider>("slidOutputDelay")->setValue(delay);
        QTest::qWait(1700);
    };
    desk.saveAs = "till"; // without the suffix
    desk.Page("commonKeyboard");
    desk.workbench.Preferences().SetAutoSave(true);
    edit(11);
    EXPECT_FALSE(std::filesystem::exists(desk.folder / "till.json")) << "it has no file yet";
    EXPECT_TRUE(desk.window->Documents().Save());
    edit(12);
    EXPECT_EQ(held(), 12);
    desk.workbench.Preferences().SetAutoSave(false);
    edit(13);
    EXPECT_EQ(held(), 12);
}

constexpr const char* kFrame = R"("format": "qx-configuration", "version": 1)";

void WriteText(const std::filesystem::path& file, const std::string& text) {
    std::ofstream(file) << text;
}

QString Name(const std::filesystem::path& file) {
    return QString::fromStdString(file.string());
}

TEST(Documents, AVanishedFolderBlocksNothing) {
    Desk desk;
    const auto stick = desk.folder / "stick";
    std::filesystem::create_directory(stick);
    desk.saveAs = "stick/till.json";
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(11);
    ASSERT_TRUE(desk.window->Documents().Save());
    desk.workbench.Preferences().SetAutoSave(true);
    std::filesystem::remove_all(stick);
    desk.Find<QSlider>("slidOutputDelay")->setValue(12);
    QTest::qWait(1700);
    EXPECT_TRUE(desk.warnings.isEmpty()) << "no message box while the user works";
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("could not be saved automatically")));

    const auto close = [&](DocumentMenu::Answer answer) {
        desk.notSaved = answer;
        desk.wasClosing = false;
        return desk.window->close();
    };
    EXPECT_FALSE(close(DocumentMenu::Answer::Cancel));
    EXPECT_TRUE(desk.wasClosing);
    EXPECT_TRUE(desk.workbench.IsModified());
    desk.window->Documents().New();
    EXPECT_TRUE(desk.workbench.IsModified()) << "New is cancelled as well";
    desk.saveAs = "elsewhere.json";
    desk.notSaved = DocumentMenu::Answer::SaveAs;
    desk.window->Documents().New();
    EXPECT_FALSE(desk.workbench.IsModified());
    EXPECT_EQ(host::Json::parse(
                  files::ReadFile(desk.folder / "elsewhere.json"))["commonKeyboard"]["outputDelay"],
              12);

    std::filesystem::create_directory(stick);
    desk.saveAs = "stick/till.json";
    desk.Find<QSlider>("slidOutputDelay")->setValue(13);
    ASSERT_TRUE(desk.window->Documents().SaveAs());
    std::filesystem::remove_all(stick);
    desk.Find<QSlider>("slidOutputDelay")->setValue(14);
    EXPECT_TRUE(close(DocumentMenu::Answer::Discard));
    EXPECT_EQ(desk.FilesIn("records/unsaved").size(), 0) << "a discarded edit leaves no copy";
}

TEST(Documents, AWriteProtectedDocumentStaysAsItIs) {
    Desk desk;
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(11);
    ASSERT_TRUE(desk.window->Documents().Save());
    const auto file = desk.folder / "till.json";
    const std::string text = files::ReadFile(file);
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    desk.Find<QSlider>("slidOutputDelay")->setValue(12);
    desk.workbench.Preferences().SetAutoSave(true);
    desk.saveAs = "copy.json";
    desk.notSaved = DocumentMenu::Answer::SaveAs;
    EXPECT_TRUE(desk.window->Documents().Save());
    EXPECT_EQ(desk.warnings.size(), 1);
    EXPECT_EQ(files::ReadFile(file), text);
    EXPECT_NE(files::ReadFile(desk.folder / "copy.json"), text);
}

TEST(Documents, UnsavedWorkSurvivesTheProgram) {
    const TempFolder shop;
    std::string edited;
    {
        Desk desk("full", shop / "");
        desk.Edit("freeProgKeys", 80);
        const auto copies = [&] { return desk.FilesIn("records/unsaved"); };
        ASSERT_TRUE(QTest::qWaitFor([&] { return copies().size() == 1; }));
        edited = desk.Document();
        using std::filesystem::perms;
        const auto folder = desk.folder / "records" / "unsaved";
        EXPECT_EQ(std::filesystem::status(folder).permissions(), perms::owner_all);
        EXPECT_EQ(std::filesystem::status(folder / copies().front().toStdString()).permissions(),
                  perms::owner_read | perms::owner_write);
        Desk second("full", {}, desk.folder / "records");
        second.leftCopy = DocumentMenu::LeftAnswer::Open;
        EXPECT_FALSE(second.window->Documents().OpenLeft()) << "its owner is still open";
        EXPECT_TRUE(second.window->close());
        EXPECT_EQ(desk.FilesIn("records/unsaved").size(), 1);
    } // destroyed without closing its window, like a killed program
    const auto older = shop / "records" / "unsaved" / "1-9.json";
    WriteText(older, R"({"document": "", "configuration": {)" + std::string(kFrame) + "}}");
    std::filesystem::last_write_time(older, std::filesystem::file_time_type::clock::now() -
                                                std::chrono::hours(1));
    Desk desk("full", shop / "");
    desk.leftCopy = DocumentMenu::LeftAnswer::Later;
    EXPECT_FALSE(desk.window->Documents().OpenLeft());
    EXPECT_EQ(desk.leftCopies.size(), 2) << "every copy is offered, and none is lost";
    desk.leftCopy = DocumentMenu::LeftAnswer::Open;
    EXPECT_TRUE(desk.window->Documents().OpenLeft());
    EXPECT_EQ(desk.Document(), edited) << "the newest copy is offered first";
    std::filesystem::remove(older);
    desk.Page("freeProgKeys");
    EXPECT_TRUE(desk.IsShownProgrammed("layoutDisplay", 80));
    EXPECT_TRUE(desk.workbench.IsModified());
    EXPECT_TRUE(desk.workbench.File().empty());
    EXPECT_EQ(desk.FilesIn("records/unsaved").size(), 1) << "now this window's copy";
    EXPECT_TRUE(desk.window->Documents().Save());
    EXPECT_EQ(desk.FilesIn("records/unsaved").size(), 0);

    WriteText(desk.folder / "records" / "unsaved" / "1-0.json", "{\"document\": 7}");
    EXPECT_FALSE(desk.window->Documents().OpenLeft());
    EXPECT_EQ(desk.warnings.size(), 1) << "a damaged copy is reported";
    EXPECT_EQ(desk.Document(), edited);
}

TEST(Documents, DamagedPreferencesAreReportedAndKept) {
    const TempFolder shop;
    WriteText(shop / "settings.ini", "[Software]\nno value\n");
    Desk desk("full", shop / "");
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("settings.ini are damaged")))
        << desk.Notice().toStdString();
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    desk.InDialog([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    desk.window->Transfers().Write();
    desk.unsaved = DocumentMenu::Answer::Discard;
    desk.window->Documents().New();
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("are damaged")))
        << "answering does not clear the preferences";
    desk.window->ApplyPreferences();
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("kept in"))) << desk.Notice().toStdString();
    EXPECT_EQ(files::ReadFile(shop / "settings.ini.damaged"), "[Software]\nno value\n");
}

TEST(Documents, AnUnusableFileIsRefusedWithAllItsFaults) {
    Desk desk;
    desk.Edit("freeProgKeys", 80);
    desk.Page("pos");
    desk.InDialog([](QWidget& dialog) {
        auto* keys = dialog.findChild<views::KeyGrid*>();
        QTest::mouseClick(keys, Qt::LeftButton, {}, keys->KeyRect(3).center());
        Desk::ClickIn(dialog, "cmdOK");
    });
    desk.Click("cmdEdit");
    desk.unsaved = DocumentMenu::Answer::Discard;
    const auto file = desk.folder / "faulty.json";
    WriteText(file, "{" + std::string(kFrame) + R"(, "commonKeyboard": {"outputDelay": 999},
        "freeProgKeys": {"keys": [{"positionCode": 75, "sequence": [300]}]},
        "pos": {"blocks": 3}})");
    desk.window->Documents().Open(Name(file));
    ASSERT_EQ(desk.details.size(), 1);
    for (const char* place : {"/commonKeyboard/outputDelay", "/freeProgKeys/keys/0", "/pos/blocks"})
        EXPECT_TRUE(desk.details.front().contains(QLatin1String(place))) << place;

    // The pages still match the document.
    desk.Page("freeProgKeys");
    EXPECT_TRUE(desk.IsShownProgrammed("layoutDisplay", 80));
    desk.Page("pos");
    EXPECT_TRUE(desk.IsShownProgrammed("posDisplay", 3));

    std::filesystem::resize_file(file, 300 << 20);
    desk.window->Documents().Open(Name(file));
    ASSERT_EQ(desk.details.size(), 2);
    EXPECT_TRUE(desk.details.back().contains(QStringLiteral("has more than")));
}

TEST(Documents, ADroppedFileIsOpenedAndNeverMoved) {
    Desk desk;
    desk.Edit("freeProgKeys", 80); // not in the file
    desk.unsaved = DocumentMenu::Answer::Discard;
    desk.Page("commonKeyboard");
    const auto first = desk.folder / "first.json";
    WriteText(first, "{" + std::string(kFrame) + R"(, "commonKeyboard": {"outputDelay": 17}})");
    QMimeData data;
    data.setUrls(
        {QUrl::fromLocalFile(Name(first)), QUrl::fromLocalFile(Name(desk.folder / "second.json"))});
    const auto actions = Qt::CopyAction | Qt::MoveAction;
    const auto send = [&](auto& event) {
        event.setDropAction(Qt::MoveAction); // proposed by the source
        QApplication::sendEvent(desk.window.get(), &event);
        EXPECT_TRUE(event.isAccepted());
        EXPECT_EQ(event.dropAction(), Qt::CopyAction);
    };
    QDragEnterEvent enter({20, 20}, actions, &data, Qt::LeftButton, {});
    send(enter);
    EXPECT_TRUE(desk.Find<QWidget>("dropMark")->isVisible());
    QDropEvent drop({20, 20}, actions, &data, Qt::LeftButton, {});
    send(drop);
    EXPECT_FALSE(desk.window->findChild<QWidget*>("dropMark")->isVisible());
    EXPECT_EQ(desk.Find<QSlider>("slidOutputDelay")->value(), 17);
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("second.json")));
    desk.Page("freeProgKeys");
    EXPECT_FALSE(desk.IsShownProgrammed("layoutDisplay", 80));
}

} // namespace
} // namespace qx::test
