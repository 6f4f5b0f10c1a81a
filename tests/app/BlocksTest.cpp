// Blocks of POS keys made, taken apart and coloured on their page.
#include "Hands.h"

#include <QMenu>
#include <QToolButton>

#include <algorithm>

namespace qx::test {
namespace {

TEST_F(Hands, PosKeysAreJoinedAndSplitOnTheirPage) {
    KeyGrid& grid = Grid("pos", "posDisplay");
    const auto middle = [&](int key) { return grid.KeyRect(key).center(); };
    // By the pointer: 2 x 2 keys in a band, joined, and what they send.
    Desk::Drag(grid, middle(1), middle(17));
    EXPECT_EQ(grid.Selected(), (std::vector<int>{1, 2, 16, 17}));
    desk.Click("joinKeys");
    EXPECT_EQ(desk.Find<QLabel>("keyTitle")->text().toStdString(),
              "Key 1 (Esc) › Block 1 (4 keys)");
    desk.Click("key_31");
    // By the keyboard: two by two elsewhere, and split off again.
    grid.setFocus();
    Keys(grid, {Qt::Key_End, Qt::Key_Home, Qt::Key_Down, Qt::Key_Down, Qt::SHIFT | Qt::Key_Right,
                Qt::SHIFT | Qt::Key_Down, Qt::CTRL | Qt::Key_J});
    EXPECT_EQ(desk.Find<QLabel>("keyTitle")->text().toStdString(), "Key 31 (1) › Block 2 (4 keys)");
    Keys(grid, {Qt::CTRL | Qt::SHIFT | Qt::Key_J});
    // Two more keys, and one of them out again.
    Click(grid, 5);
    grid.setFocus();
    Keys(grid, {Qt::SHIFT | Qt::Key_Right, Qt::CTRL | Qt::Key_J, Qt::Key_Return});
    Type("b");
    Keys(grid, {Qt::Key_Right, Qt::Key_Left});
    EXPECT_EQ(grid.Selected(), std::vector<int>{6});
    grid.setFocus();
    Keys(grid, {Qt::CTRL | Qt::SHIFT | Qt::Key_J});
    // A key by itself, in another colour.
    Click(grid, 105);
    desk.Click("key_2");
    auto& button = *desk.Find<QToolButton>("colourBlocks");
    TypeInMenu({Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Return});
    Keys(button, {Qt::Key_Space});
    auto* colours = button.defaultAction()->menu();
    emit colours->aboutToShow();
    for (const QAction* colour : colours->actions())
        EXPECT_EQ(colour->isChecked(), colour->objectName() == "blockColour_7");
    const auto& caps = grid.Keys();
    const auto cap = std::ranges::find(caps, 105, &views::KeyCap::index);
    EXPECT_EQ(cap->color, views::ToQColor(desk.workbench.Preferences().POSColorBlock(7)));
    Write();
    const auto record = [&](int key, Long size) {
        return desk.Memory(MODULE_POS, Long{key - 1} * 32, size);
    };
    EXPECT_EQ(record(1, 4), Bytes("01 1F 9F 00"));
    for (const int key : {2, 16, 17})
        EXPECT_EQ(record(key, 2), Bytes("01 00")) << key;
    EXPECT_EQ(record(5, 4), Bytes("00 32 B2 00")) << "alone";
    EXPECT_EQ(record(6, 1), Bytes("FF"));
    EXPECT_EQ(record(105, 4), Bytes("00 02 82 00"));
    // Another block's keys are not taken, not even with free ones.
    const std::string before = desk.Document();
    Click(grid, 17);
    EXPECT_EQ(desk.Find<QLabel>("keyTitle")->text().toStdString(),
              "Key 1 (Esc) › Block 1 (4 keys)");
    Click(grid, 18, Qt::ControlModifier);
    Click(grid, 5, Qt::ControlModifier);
    Keys(grid, {Qt::CTRL | Qt::Key_J});
    EXPECT_EQ(desk.Notice().toStdString(),
              "Key 17 (`) is in block 1, other keys are in block 2: split one of them off first. "
              "Nothing has been changed.");
    EXPECT_EQ(desk.Document(), before);
    Click(grid, 16);
    grid.setFocus();
    Keys(grid, {Qt::CTRL | Qt::Key_B});
    EXPECT_EQ(grid.Selected(), (std::vector<int>{1, 2, 16, 17}));
    Keys(grid, {Qt::CTRL | Qt::SHIFT | Qt::Key_J});
    EXPECT_EQ(desk.Notice().toStdString(), "Block 1 and its sequence removed.");
    Write();
    for (const int key : {1, 2, 16, 17})
        EXPECT_EQ(record(key, 1), Bytes("FF")) << key;
    ExpectSteps(10);
}

TEST_F(Hands, UndoShowsTheKeyThatComesBackIntoItsBlock) {
    KeyGrid& grid = Grid("pos", "posDisplay");
    grid.Select({1, 2, 3});
    Keys(grid, {Qt::CTRL | Qt::Key_J});
    Click(grid, 3);
    Keys(grid, {Qt::CTRL | Qt::SHIFT | Qt::Key_J});
    desk.UndoAction().trigger();
    EXPECT_EQ(grid.Selected(), std::vector<int>{3});
    EXPECT_TRUE(grid.hasFocus());
}

} // namespace
} // namespace qx::test
