// The layers of function keys under the user's hands, and the descriptions of their keys.
#include "Hands.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"

#include <QClipboard>

namespace qx::test {
namespace {

TEST_F(Hands, LayersAreNamedCopiedAndSwapped) {
    KeyGrid& grid = Layers();
    Click(grid, 3);
    Keys(grid, {Qt::Key_Return});
    Type("a");
    QTest::keyClicks(desk.Find<QLineEdit>("txtSymbolDesc"), QStringLiteral("Tea"));
    auto* tabs = desk.Find<QTabBar>("layers");
    EXPECT_EQ(tabs->accessibleTabName(0).toStdString(), "0, programmed");
    auto* name = desk.Find<QLineEdit>("layerName");
    QTest::keyClicks(name, QStringLiteral("Drinks"));
    desk.UndoAction().trigger();
    EXPECT_EQ(name->text(), QString()) << "the letters are one step";
    QTest::keyClicks(name, QStringLiteral("Drinks"));
    EXPECT_TRUE(tabs->tabText(0).startsWith(QStringLiteral("0 Drinks")));

    // By the pointer alone.
    ClickAt(*tabs, tabs->tabRect(0).center(), Qt::RightButton);
    auto* menu = desk.window->findChild<QMenu*>(QStringLiteral("tabMenu"));
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions().front()->text().toStdString(), "Layer 0 Drinks");
    Choose({"Copy to layer", "4"});
    desk.ShowLayer(4);
    EXPECT_EQ(name->text(), QString()) << "the name is not copied";
    // By the keyboard alone.
    auto* button = desk.Find<QPushButton>("layerMenu");
    button->setFocus();
    for (const Qt::Key layer : {Qt::Key_9, Qt::Key_0}) {
        TypeInMenu({Qt::Key_S, layer});
        QTest::keyClick(button, Qt::Key_Space);
    }
    EXPECT_EQ(name->text().toStdString(), "Drinks");
    Write();
    const auto layer = [&](int number) {
        return desk.Memory(MODULE_LAYERED_FUNCKEYS, (Long{number} * 24 + 3) * 128, 3);
    };
    EXPECT_EQ(layer(0), Bytes("00 00 00"));
    EXPECT_EQ(layer(4), Bytes("1F 9F 00"));
    EXPECT_EQ(layer(9), Bytes("1F 9F 00"));
    EXPECT_EQ(desk.ControlOf<QXLayeredFuncKeys>("layeredFuncKeys").Layer(9).GetKeyDesc(3), "Tea");
    // Documents keep the name, keyboards do not.
    const auto file = desk.folder / "names.json";
    desk.workbench.SaveDocument(file);
    desk.window->Transfers().Read();
    desk.ShowLayer(4);
    EXPECT_EQ(name->text(), QString());
    EXPECT_FALSE(desk.workbench.IsModified());
    desk.window->Documents().Open(QString::fromStdString(file.string()));
    desk.ShowLayer(4);
    EXPECT_EQ(name->text().toStdString(), "Drinks");
    desk.workbench.NewDocument();
    EXPECT_EQ(desk.Document().find("Drinks"), std::string::npos);
}

// F1 and F2 have sequences and descriptions, F3 a description alone.
TEST_F(Hands, DescriptionsGoWithTheSequencesOfTheirKeys) {
    KeyGrid& grid = Layers();
    const char* const texts[] = {"Cash", "Card", "Tip"};
    for (int key = 0; key < 3; ++key) {
        Click(grid, key);
        if (key < 2)
            desk.Click(key == 0 ? "key_31" : "key_50");
        QTest::keyClicks(desk.Find<QLineEdit>("txtSymbolDesc"), QString::fromLatin1(texts[key]));
    }
    const std::string a = Bytes("1F 9F 00");
    const std::string b = Bytes("32 B2 00");
    const std::string none(1, '\0');
    struct Held {
        std::string sequence, description;
    };
    const auto expect = [&](std::initializer_list<Held> keys) {
        Write();
        int key = 0;
        for (const Held& held : keys) {
            EXPECT_EQ(Slot(key, static_cast<Long>(held.sequence.size())), held.sequence) << key;
            EXPECT_EQ(Description(key), held.description) << key;
            ++key;
        }
    };
    const auto middle = [&](int key) { return grid.KeyRect(key).center(); };
    Desk::Drag(grid, middle(0), middle(1), Qt::ShiftModifier);
    expect({{b, "Card"}, {a, "Cash"}, {none, "Tip"}});
    desk.UndoAction().trigger();
    expect({{a, "Cash"}, {b, "Card"}, {none, "Tip"}});
    Click(grid, 1);
    Click(grid, 2, Qt::ControlModifier);
    grid.setFocus();
    Keys(grid, {Qt::CTRL | Qt::Key_T});
    expect({{a, "Cash"}, {none, "Tip"}, {b, "Card"}});
    Desk::Drag(grid, middle(0), middle(1));
    desk.Click("noticeOffer");
    expect({{a, "Cash"}, {none, "Tip"}, {b, "Card"}});
    Click(grid, 2);
    grid.setFocus();
    Keys(grid, {Qt::CTRL | Qt::Key_X, Qt::Key_Right, Qt::CTRL | Qt::Key_V, Qt::CTRL | Qt::Key_D});
    expect({{a, "Cash"}, {none, "Tip"}, {none, ""}, {b, "Card"}, {b, "Card"}});

    // A sequence from elsewhere has none; clearing removes the sequence alone.
    QApplication::clipboard()->setText(QStringLiteral("B ^B"));
    Click(grid, 0);
    grid.setFocus();
    Keys(grid, {Qt::CTRL | Qt::Key_V, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Delete,
                Qt::Key_Right, Qt::CTRL | Qt::Key_C});
    expect({{b, "Cash"}, {none, "Tip"}, {none, ""}, {none, "Card"}, {b, "Card"}});
    KeyGrid& free = Grid("freeProgKeys", "layoutDisplay");
    Click(free, 75);
    Keys(free, {Qt::CTRL | Qt::Key_V});
    Write();
    EXPECT_EQ(desk.Memory(MODULE_FREEPROGRAMMABLE_KEYS, 0, 3), b);
    Keys(free, {Qt::CTRL | Qt::Key_C});
    Layers();
    Click(grid, 1);
    grid.setFocus();
    Keys(grid, {Qt::CTRL | Qt::Key_V});
    expect({{b, "Cash"}, {b, "Tip"}});
}

} // namespace
} // namespace qx::test
