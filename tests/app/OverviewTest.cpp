// The overview: the picture of the keyboard and the cards lead to the pages; what it shows without
// a keyboard.
#include "Desk.h"
#include "files/Files.h"
#include "host/FieldLister.h"

#include <QCommandLinkButton>
#include <QFormLayout>
#include <QSlider>
#include <QTableWidget>

#include <fstream>

namespace qx::test {
namespace {

class Overview : public testing::Test {
protected:
    void Open(const char* sections) {
        std::ofstream(desk.folder / "till.json")
            << R"({"format": "qx-configuration", "version": 1, )" << sections << "}";
        desk.unsaved = DocumentMenu::Answer::Discard;
        desk.window->Documents().Open(QString::fromStdString((desk.folder / "till.json").string()));
        desk.Page("overview");
    }
    // Whether these are the keys of the picture that send something.
    bool ShowsProgrammed(const std::set<int>& wanted) {
        const auto* picture = desk.Find<views::KeyGrid>("keyboardPicture");
        return QTest::qWaitFor([&] {
            std::set<int> keys;
            for (const views::KeyCap& cap : picture->Keys())
                if (cap.state == views::KeyState::Programmed)
                    keys.insert(cap.index);
            return keys == wanted;
        });
    }
    QStringList Cards() {
        QStringList cards;
        for (const auto* card : desk.window->findChildren<QCommandLinkButton*>())
            if (card->isVisible())
                cards.append(card->objectName());
        return cards;
    }
    QString PageShown() { return desk.Find<QListWidget>("pages")->currentItem()->text(); }

    Desk desk;
};

TEST_F(Overview, ThePictureShowsWhichKeysSendSomethingAndLeadsToThem) {
    Open(R"("freeProgKeys": {"keys": [{"positionCode": 76, "sequence": "A"}]},
            "pos": {"blocks": [{"slot": 1, "blockId": 1, "colorId": 0, "keys": [1, 2],
                                "sequence": "B"},
                               {"slot": 5, "blockId": 2, "colorId": 1, "keys": [5],
                                "sequence": ""}]})");
    // POS keys 1 and 2 have the position codes 110 and 112.
    EXPECT_TRUE(ShowsProgrammed({76, 110, 112}));
    desk.ClickKey("keyboardPicture", 76);
    EXPECT_EQ(PageShown(), "Free keys");
    EXPECT_EQ(desk.Find<views::KeyGrid>("layoutDisplay")->Selected(), std::vector<int>{76});

    desk.Page("overview");
    desk.ClickKey("keyboardPicture", 112);
    EXPECT_EQ(PageShown(), "POS keys") << "the free key sends nothing";
    EXPECT_EQ(desk.Find<views::KeyGrid>("posDisplay")->Selected(), std::vector<int>{2});

    desk.Page("overview");
    EXPECT_FALSE(desk.workbench.IsModified());
    desk.workbench.NewDocument();
    EXPECT_TRUE(ShowsProgrammed({})) << "the picture follows the document";
}

// POS keys 1 and 2 are the keys 110 and 112. 94 is the second of three POS keys with the code 61.
TEST_F(Overview, ThePictureShowsWhatAKeyOfSeveralModulesSends) {
    Open(R"("freeProgKeys": {"keys": [{"positionCode": 112, "sequence": "Esc Enter"}]},
            "pos": {"blocks": [{"slot": 1, "blockId": 1, "colorId": 0, "keys": [1, 2],
                                "sequence": "A"},
                               {"slot": 94, "blockId": 2, "colorId": 1, "keys": [94],
                                "sequence": "B"}]})");
    ASSERT_TRUE(ShowsProgrammed({110, 112, 61}));
    const auto toolTip = [this] {
        for (const views::KeyCap& cap : desk.Find<views::KeyGrid>("keyboardPicture")->Keys())
            if (cap.index == 112)
                return cap.toolTip.section(u'\n', -1).toStdString();
        return std::string();
    };
    EXPECT_EQ(toolTip(), "POS keys: A");
    for (const auto& [code, key] : {std::pair{112, 2}, {61, 94}}) {
        desk.Page("overview");
        desk.ClickKey("keyboardPicture", code);
        EXPECT_EQ(PageShown(), "POS keys");
        EXPECT_EQ(desk.Find<views::KeyGrid>("posDisplay")->Selected(), std::vector<int>{key});
    }
    desk.Click("clearKeys");
    desk.ClickKey("posDisplay", 1);
    desk.Click("clearKeys");
    desk.Page("overview");
    EXPECT_TRUE(ShowsProgrammed({112}));
    EXPECT_EQ(toolTip(), "Free keys: Esc Enter");
}

TEST_F(Overview, WithoutAKeyboardThereAreCardsForTheDocumentsSections) {
    Open(R"("commonKeyboard": {"outputDelay": 9}, "pos": {"blocks": []})");
    EXPECT_EQ(Cards().size(), 6) << "the modules of the keyboard: "
                                 << Cards().join(' ').toStdString();
    desk.workbench.Disconnect();
    EXPECT_EQ(Cards(), QStringList({"card_commonKeyboard", "card_pos"}));
    EXPECT_EQ(desk.Find<QCommandLinkButton>("card_commonKeyboard")->description(),
              "Output delay: 9");
    EXPECT_ANY_THROW(desk.Find<views::KeyGrid>("keyboardPicture")) << "which keyboard is unknown";
    Open(R"("freeProgKeys": {"keys": []})");
    EXPECT_EQ(Cards(), QStringList("card_freeProgKeys"));
    desk.Click("card_freeProgKeys");
    EXPECT_EQ(PageShown(), "Free keys");
    desk.Page("overview");
    EXPECT_TRUE(desk.window->Keyboards().Connect(desk.workbench.Choice()));
    EXPECT_EQ(Cards().size(), 6);
}

TEST_F(Overview, NamesTheKeyboardsCapabilitiesLikeTheCommandLine) {
    desk.Page("overview");
    std::vector<host::Setting> settings;
    host::FieldLister lister({"keyboard", "keyboard", {}}, nullptr, settings);
    desk.workbench.Session().Keyboard().Visit(lister);
    QStringList has;
    for (const host::Setting& setting : settings)
        if (setting.value.kind == host::SettingValue::Kind::On)
            has += QString::fromStdString(StepsOf(setting.name).back());
    EXPECT_EQ(has.size(), 8);
    QStringList shown;
    for (const auto* label : desk.window->findChildren<QLabel*>())
        shown += label->text();
    EXPECT_TRUE(shown.contains(has.join('\n'))) << shown.join('|').toStdString();
}

TEST_F(Overview, KeysComeBeforeReadersInTheList) {
    QStringList ids;
    const auto* pages = desk.Find<QListWidget>("pages");
    for (int row = 0; row < pages->count(); ++row)
        if (!pages->item(row)->isHidden())
            ids += pages->item(row)->data(Qt::UserRole).toString();
    EXPECT_EQ(ids.join(' ').simplified().toStdString(),
              "overview commonKeyboard freeProgKeys layeredFuncKeys pos magnetCard barcode files "
              "backups testDrive preferences");
}

TEST_F(Overview, AKeyboardThatDoesNotAnswerIsReportedWithAdvice) {
    EXPECT_FALSE(desk.window->Keyboards().Connect({desk.folder / "no.so", {}, {}}));
    EXPECT_TRUE(desk.Find<QLabel>("lblFailure")->text().contains(QStringLiteral("no.so")));
    const auto asksForThePlug = [&] {
        return desk.Find<QLabel>("lblFailure")->text().contains(QStringLiteral("plugged in"));
    };
    EXPECT_FALSE(asksForThePlug()) << "there is not even a driver";
    files::WriteFileAtomically(desk.folder / "mute.qxk.wild", "QXCFG_Init refuse");
    EXPECT_FALSE(
        desk.window->Keyboards().Connect({QX_WILD_DRIVER, desk.folder / "mute.qxk", "full"}));
    EXPECT_TRUE(asksForThePlug());
    EXPECT_FALSE(desk.window->Keyboards().Connect({desk.folder / "no.so", {}, {}}));
    QStringList stages;
    for (const auto* label : desk.window->findChildren<QLabel*>())
        stages.append(label->text());
    EXPECT_TRUE(stages.contains(QStringLiteral("Opening the driver: failed")));
    EXPECT_TRUE(stages.contains(QStringLiteral("Finding the keyboard's modules: not tried")));
    desk.window->Transfers().Read();
    desk.window->Transfers().Write();
    ASSERT_EQ(desk.warnings.size(), 2) << desk.warnings.join(' ').toStdString();
    for (const QString& warning : desk.warnings)
        EXPECT_TRUE(warning.contains(QStringLiteral("No keyboard is connected")));
    desk.Page("commonKeyboard"); // the document can still be edited
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    EXPECT_TRUE(desk.workbench.IsModified());
    EXPECT_TRUE(desk.window->Keyboards().Connect({{}, desk.folder / "keyboard.qxk", {}}));
    desk.workbench.Preferences().SetVersionFirmware(0x200);
    EXPECT_TRUE(desk.window->Keyboards().Connect(desk.workbench.Choice()));
    EXPECT_TRUE(desk.Find<QLabel>("lblKeyboard")->toolTip().contains(QStringLiteral("P100")));
    desk.workbench.Preferences().SetVersionFirmware(0x100);
    EXPECT_TRUE(desk.window->Keyboards().Connect(desk.workbench.Choice()));
    EXPECT_EQ(desk.Find<QLabel>("lblKeyboard")->toolTip(), QString()) << "recent enough";

    desk.Page("overview");
    desk.Click("foldDetails");
    QStringList rows;
    for (const auto* label : desk.window->findChildren<QLabel*>())
        if (const auto* form = qobject_cast<QFormLayout*>(label->parentWidget()->layout()))
            if (const auto* name =
                    qobject_cast<QLabel*>(form->labelForField(const_cast<QLabel*>(label))))
                rows.append(name->text() + label->text());
    for (const char* row : {"Name:QX-POS-FULL", "Firmware:P100", "Bootloader:B100", "Country:US01",
                            "Configuration:C001", "Kind:simulated keyboard"})
        EXPECT_TRUE(rows.contains(QLatin1String(row))) << row;
    const auto* directory = desk.Find<QTableWidget>("directory");
    ASSERT_EQ(directory->rowCount(), 8);
    EXPECT_EQ(directory->item(6, 0)->text(), QStringLiteral("6"));
    EXPECT_EQ(directory->item(6, 1)->text(), QStringLiteral("MODULE_POS"));
    EXPECT_EQ(directory->item(6, 2)->text(), QStringLiteral("0x4000"));
}

} // namespace
} // namespace qx::test
