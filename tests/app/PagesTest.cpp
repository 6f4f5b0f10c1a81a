// The modules' pages: the keys and tracks they offer, and the actions that count as an edit.
#include "Desk.h"
#include "qxcontrols/keyprog/FreeProgKeysBlock.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"

#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>

#include <algorithm>

namespace qx::test {
namespace {

TEST(Pages, FunctionKeysOfOtherModelsAreWrittenToo) {
    Desk desk("x1-4620");
    auto& control = desk.ControlOf<QXFreeProgKeys>("funcKeys4620");
    const auto stored = StoredFreeProgKeys(control.Sequences(), MODULE_FUNCKEYS_X1_4620);
    ASSERT_FALSE(stored.empty());
    desk.Edit("funcKeys4620", stored.front());
    EXPECT_EQ(desk.Write().size(), 1);
    EXPECT_TRUE(desk.warnings.isEmpty()) << desk.warnings.join(' ').toStdString();
    EXPECT_EQ(desk.Memory(MODULE_FUNCKEYS_X1_4620, 0, 3), Bytes("1F 9F 00"));

    // A key that the module does not have cannot be edited.
    desk.Page("funcKeys4620");
    const auto& caps = desk.Find<views::KeyGrid>("layoutDisplay")->Keys();
    const auto other = std::find_if(caps.begin(), caps.end(), [&](const views::KeyCap& cap) {
        return cap.state == views::KeyState::Empty &&
               std::find(stored.begin(), stored.end(), cap.index) == stored.end();
    });
    ASSERT_NE(other, caps.end());
    desk.ClickKey("layoutDisplay", other->index);
    desk.Click("cmdEdit_0");
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("no place")));
}

// Selecting keys, pages and layers is not an edit; the next action clears old notices.
TEST(Pages, SelectingIsNotAnEditAndClearsOldNotices) {
    Desk desk;
    desk.Page("freeProgKeys");
    desk.ControlOf<QXFreeProgKeys>("freeProgKeys").cmdEdit_Click(0); // its button is disabled
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("Select a key first")));
    desk.ClickKey("layoutDisplay", 75);
    EXPECT_EQ(desk.Notice(), QString());
    desk.Page("barcode");
    desk.Find<QTabWidget>("barcodeTabs")->setCurrentIndex(2);
    desk.Page("layeredFuncKeys");
    desk.ShowLayer(1);
    desk.ClickKey("funcKeys", 7);
    EXPECT_FALSE(desk.workbench.IsModified());
    EXPECT_FALSE(desk.workbench.History().CanUndo());
}

TEST(Pages, ButtonsForOneKeyWaitForIt) {
    Desk desk;
    const auto isEnabled = [&](const char* button) {
        return desk.Find<QAbstractButton>(button)->isEnabled();
    };
    for (const auto& [page, grid] :
         {std::pair("freeProgKeys", "layoutDisplay"), {"layeredFuncKeys", "funcKeys"}}) {
        desk.Page(page);
        const int key = page == std::string("freeProgKeys") ? 75 : 3;
        for (const bool isPicked : {false, true}) {
            EXPECT_EQ(isEnabled("cmdEdit_0"), isPicked) << page; // Edit…
            EXPECT_EQ(isEnabled("cmdEdit_1"), isPicked) << page; // Clear key
            EXPECT_TRUE(isEnabled("cmdEdit_2")) << page;         // Clear all
            desk.ClickKey(grid, key);
        }
        desk.Find<views::KeyGrid>(grid)->Select({key, key + 1});
        EXPECT_FALSE(isEnabled("cmdEdit_0")) << page << ", several keys";
        EXPECT_FALSE(isEnabled("cmdEdit_1")) << page << ", several keys";
    }
}

TEST(Pages, AnAbsentModuleOffersNothing) {
    Desk desk;
    desk.Page("funcKeys4620");
    const auto isShown = [&](const QString& text) {
        const auto labels = desk.window->findChildren<QLabel*>();
        return std::ranges::any_of(labels, [&](const QLabel* label) {
            return label->isVisible() && label->text() == text;
        });
    };
    EXPECT_TRUE(isShown(QStringLiteral("This keyboard does not have this module.")));
    EXPECT_FALSE(isShown(QStringLiteral("Select a key to see and change what it sends.")));
    const auto darkest = [&] {
        const QImage image = desk.Find<views::KeyGrid>("layoutDisplay")->grab().toImage();
        int least = 255;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                least = std::min(least, qGray(image.pixel(x, y)));
        return least;
    };
    EXPECT_GT(darkest(), 100) << "its keys look live";
    desk.Page("freeProgKeys");
    EXPECT_TRUE(isShown(QStringLiteral("Select a key to see and change what it sends.")));
    EXPECT_LT(darkest(), 100);
}

TEST(Pages, RecordsOnlyCodesThatAKeyboardStores) {
    Desk desk;
    desk.Page("freeProgKeys");
    desk.ClickKey("layoutDisplay", 75);
    desk.InDialog([&](QWidget& dialog) {
        for (const Long code : {31, 300, 159}) {
            desk.workbench.Simulated()->QueuePositionKey(code);
            QTest::qWait(250);
        }
        Desk::ClickIn(dialog, "cmdOK");
    });
    desk.Click("cmdEdit_0");
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("no keyboard can store")))
        << desk.Notice().toStdString();
    EXPECT_EQ(desk.Write().size(), 1);
    EXPECT_EQ(desk.Memory(MODULE_FREEPROGRAMMABLE_KEYS, 0, 3), Bytes("1F 9F 00"));

    // Recording also stops at the maximum length.
    struct Editor {
        const char* page;
        const char* keys;
        const char* button;
        int room;
    };
    for (const Editor& editor : {Editor{"freeProgKeys", "layoutDisplay", "cmdEdit_0", 32},
                                 Editor{"layeredFuncKeys", "funcKeys", "cmdEdit_0", 128},
                                 Editor{"magnetCard", nullptr, "cmdCreate_0", 32}}) {
        desk.Page(editor.page);
        if (editor.keys != nullptr)
            desk.ClickKey(editor.keys, editor.room == 128 ? 3 : 75);
        desk.InDialog([&](QWidget& dialog) {
            auto* typed = dialog.findChild<QLineEdit*>(QStringLiteral("txtTyped"));
            typed->setText(QStringLiteral("{1} ").repeated(200));
            QTest::keyClick(typed, Qt::Key_Return);
            EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("lblTypedFault"))->text(),
                      QStringLiteral("The text has 200 codes, only %1 fit.").arg(editor.room));
            Desk::ClickIn(dialog, "cmdCancel");
        });
        desk.Click(editor.button);
    }
}

TEST(Pages, OffersTheTracksThatThereAre) {
    Desk desk;
    auto& card = desk.ControlOf<QXMagnetCard>("magnetCard");
    desk.Page("magnetCard");
    desk.Find<QListWidget>("trackList")->setCurrentRow(1);
    card.Track(2).SetAvailable(false); // as for a keyboard without it
    card.lblCurrHeader_KeyPress();
    card.cmdCreate_Click(0);
    card.cmdRemove_Click(1);
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("cannot read track 2")));
    EXPECT_FALSE(desk.workbench.IsModified());
    EXPECT_FALSE(desk.window->Keyboards().Connect({desk.folder / "no.so", {}, {}}));
    desk.Page("magnetCard");
    EXPECT_EQ(desk.Find<QListWidget>("trackList")->count(), 4) << "no keyboard limits it";
    EXPECT_EQ(desk.Find<QListWidget>("trackList")->currentRow(), 1);

    Desk without("magnet"); // track 1
    without.Page("magnetCard");
    EXPECT_EQ(without.Find<QListWidget>("trackList")->count(), 2);
    EXPECT_EQ(without.Find<QListWidget>("trackList")->currentRow(), 0);
    EXPECT_TRUE(without.Find<QWidget>("cmdCreate_0")->isEnabled());
}

} // namespace
} // namespace qx::test
