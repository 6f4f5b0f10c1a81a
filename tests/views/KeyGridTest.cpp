// The key grid: every key within reach of arrows, pointer and screen readers.
#include "TestCaps.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"
#include "views/QXLayoutDisplayView.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <utility>

namespace qx::views {
namespace {

// Two rows: 1 2 3 above 4 (wide) 5.
std::vector<KeyCap> TwoRows() {
    return {Cap(1, {0, 0, 90, 90}), Cap(2, {100, 0, 90, 90}), Cap(3, {200, 0, 90, 90}),
            Cap(4, {0, 100, 190, 90}), Cap(5, {200, 100, 90, 90})};
}

using Steps = std::map<int, std::set<int>>; // from a key to those next to it

// Where arrows lead from each key, and the way back.
std::pair<Steps, Steps> ArrowSteps(KeyGrid& grid) {
    Steps steps;
    Steps back;
    for (const KeyCap& cap : grid.Keys())
        for (const Qt::Key arrow : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}) {
            grid.SetFocusKey(cap.index);
            QTest::keyClick(&grid, arrow);
            steps[cap.index].insert(grid.FocusKey());
            back[grid.FocusKey()].insert(cap.index);
        }
    return {steps, back};
}

std::set<int> Reached(const Steps& steps, int from) {
    std::set<int> reached{from};
    std::deque<int> open{from};
    for (; !open.empty(); open.pop_front())
        if (const auto found = steps.find(open.front()); found != steps.end())
            for (const int key : found->second)
                if (reached.insert(key).second)
                    open.push_back(key);
    return reached;
}

class KeyGridTest : public testing::Test {
protected:
    KeyGridTest() {
        QObject::connect(&grid, &KeyGrid::KeyReached, &grid,
                         [this](int index) { reached.push_back(index); });
        grid.SetKeys(TwoRows());
        grid.resize(300, 200);
        grid.show();
        grid.activateWindow();
        grid.setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&grid));
    }
    [[nodiscard]] std::vector<int> Picked() const {
        std::vector<int> keys;
        for (const auto& arguments : picked)
            keys.push_back(arguments[0].toInt());
        return keys;
    }

    KeyGrid grid;
    QSignalSpy picked{&grid, &KeyGrid::KeyPicked};
    std::vector<int> reached;
};

TEST_F(KeyGridTest, ArrowsGoToTheNearestKeyAndKeepToTheirColumn) {
    const auto walk = [&](std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys)
            QTest::keyClick(&grid, key);
        return grid.FocusKey();
    };
    EXPECT_EQ(walk({Qt::Key_Home}), 1);
    EXPECT_EQ(walk({Qt::Key_Left}), 1); // nothing there
    EXPECT_EQ(walk({Qt::Key_Up}), 1);
    EXPECT_EQ(walk({Qt::Key_Right}), 2);
    EXPECT_EQ(walk({Qt::Key_Down}), 4);
    EXPECT_EQ(walk({Qt::Key_Up}), 2); // not 1, though it is as near
    EXPECT_EQ(walk({Qt::Key_Down, Qt::Key_Right}), 5);
    EXPECT_EQ(walk({Qt::Key_Left, Qt::Key_Left, Qt::Key_Up}), 1); // from the middle of 4
    EXPECT_EQ(walk({Qt::Key_End}), 5);
    EXPECT_TRUE(picked.isEmpty());
    reached.clear();
    EXPECT_EQ(walk({Qt::Key_Home, Qt::Key_Right}), 2);
    QTest::keyClick(&grid, Qt::Key_Right, Qt::ControlModifier); // left to others,
    QTest::keyClick(&grid, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(grid.FocusKey(), 2);
    grid.SetControlMoves(true); // unless the owner enables it
    QTest::keyClick(&grid, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(grid.FocusKey(), 4);
    EXPECT_EQ(reached, (std::vector<int>{1, 2}));
    EXPECT_TRUE(picked.isEmpty());
    QTest::keyClick(&grid, Qt::Key_Space, Qt::ControlModifier);
    ASSERT_EQ(picked.size(), 1);
    EXPECT_EQ(picked.takeFirst(), (QVariantList{4, true}));
    EXPECT_EQ(walk({Qt::Key_End}), 5);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter})
        QTest::keyClick(&grid, key);
    QTest::keyClick(&grid, Qt::Key_Return, Qt::ControlModifier); // somebody else's shortcut
    EXPECT_EQ(Picked(), (std::vector<int>{5, 5, 5}));
}

TEST_F(KeyGridTest, APressIsAPickWhenItEndsOnTheSameKey) {
    const auto middle = [&](int key) { return grid.KeyRect(key).center(); };
    QTest::mouseClick(&grid, Qt::LeftButton, {}, middle(4));
    QTest::mouseClick(&grid, Qt::RightButton, {}, middle(5));
    QTest::mousePress(&grid, Qt::LeftButton, {}, middle(2));
    QTest::mouseRelease(&grid, Qt::LeftButton, {}, middle(3));
    QTest::mouseClick(&grid, Qt::LeftButton, {}, QPoint(1, 1)); // beside the keys
    EXPECT_EQ(Picked(), std::vector<int>{4});
    EXPECT_EQ(grid.FocusKey(), 4); // the focus stays on the key that was picked
    QTest::mouseClick(&grid, Qt::LeftButton, Qt::ControlModifier, middle(2));
    EXPECT_EQ(picked.takeLast(), (QVariantList{2, true}));
    EXPECT_FALSE(picked.last()[1].toBool());

    std::vector<KeyCap> caps = TwoRows();
    caps[3].isEnabled = false;
    grid.SetKeys(caps);
    QTest::mouseClick(&grid, Qt::LeftButton, {}, middle(4)); // can be looked at, not picked
    EXPECT_EQ(grid.FocusKey(), 4);
    EXPECT_TRUE(QToolTip::text().contains(QStringLiteral("Tip 4"))); // which says why
    QToolTip::hideText();
    grid.Pick(4);
    grid.Pick(99);
    EXPECT_EQ(Picked(), std::vector<int>{4});

    caps.erase(caps.begin() + 3);
    grid.SetKeys(caps);
    EXPECT_EQ(grid.FocusKey(), -1);
    EXPECT_TRUE(grid.KeyRect(4).isEmpty());
    EXPECT_EQ(grid.KeyAt(middle(5)), 5);

    // A key without a place is not there: it is neither drawn nor reached.
    const QSize size = grid.sizeHint();
    for (const QRectF& none : {QRectF(-500, 0, -25, -25), QRectF(900, 0, 90, 0)}) {
        caps.push_back(Cap(9, none));
        grid.SetKeys(caps);
        EXPECT_FALSE(grid.HasKey(9));
        EXPECT_EQ(grid.sizeHint(), size);
    }
}

TEST_F(KeyGridTest, TabReachesAKeyOnlyWhereNoneIsCurrent) {
    const auto enterBy = [&](Qt::FocusReason reason) {
        grid.clearFocus();
        grid.setFocus(reason);
        return grid.FocusKey();
    };
    EXPECT_EQ(enterBy(Qt::OtherFocusReason),
              -1); // a window that comes to the front chooses nothing
    EXPECT_EQ(enterBy(Qt::TabFocusReason), 1);
    EXPECT_EQ(reached, std::vector<int>{1});
    grid.SetKeys({});
    std::vector<KeyCap> caps = TwoRows();
    caps[2].isCurrent = true;
    grid.SetKeys(caps);
    EXPECT_EQ(enterBy(Qt::BacktabFocusReason), 3);
    EXPECT_EQ(reached, std::vector<int>{1});
}

TEST_F(KeyGridTest, ScreenReadersFindEveryKey) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&grid);
    ASSERT_NE(accessible, nullptr);
    ASSERT_EQ(accessible->childCount(), 5);
    for (int row = 0; row < 5; ++row) {
        const int index = row + 1;
        QAccessibleInterface* key = accessible->child(row);
        ASSERT_NE(key, nullptr);
        EXPECT_EQ(key->role(), QAccessible::Button);
        EXPECT_EQ(key->text(QAccessible::Name).toStdString(), "Key " + std::to_string(index));
        EXPECT_EQ(key->parent(), accessible);
        EXPECT_EQ(accessible->indexOfChild(key), row);
        EXPECT_EQ(key->rect().size(), grid.KeyRect(index).size());
        const QPoint middle = key->rect().center();
        EXPECT_EQ(accessible->childAt(middle.x(), middle.y()), key);
        EXPECT_EQ(accessible->child(row), key) << "a new interface each time";
    }
    QAccessibleInterface* second = accessible->child(1);
    second->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(accessible->focusChild(), second);
    EXPECT_TRUE(second->state().focused);
    EXPECT_TRUE(picked.isEmpty());
    second->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(Picked(), std::vector<int>{2});

    std::vector<KeyCap> fewer = TwoRows();
    fewer[0].isEnabled = false;
    fewer.erase(fewer.begin() + 1);
    grid.SetKeys(fewer);
    EXPECT_FALSE(second->isValid());
    EXPECT_TRUE(accessible->child(0)->state().disabled);
    EXPECT_EQ(accessible->child(1)->text(QAccessible::Name).toStdString(), "Key 3");
    EXPECT_EQ(accessible->child(5), nullptr);
}

// A picked key becomes the anchor of the selection, which is never empty once it has one.
TEST_F(KeyGridTest, SeveralKeysAreSelected) {
    grid.SetSelects(true);
    const auto select = [&](int key, Qt::KeyboardModifiers modifiers) {
        QTest::mouseClick(&grid, Qt::LeftButton, modifiers, grid.KeyRect(key).center());
        return grid.Selected();
    };
    using Keys = std::vector<int>;
    EXPECT_EQ(select(1, {}), Keys{1});
    EXPECT_EQ(select(1, Qt::ControlModifier), Keys{1}) << "one stays";
    EXPECT_EQ(select(3, Qt::ControlModifier), (Keys{1, 3}));
    EXPECT_EQ(select(3, Qt::ControlModifier), Keys{1});
    EXPECT_EQ(Picked(), (Keys{1, 1, 3, 1}));
    EXPECT_EQ(select(5, Qt::ShiftModifier), (Keys{1, 2, 3, 4, 5}));
    std::vector<KeyCap> caps = TwoRows();
    caps[1].joinsRanges = false;
    caps.pop_back();
    grid.SetKeys(caps);
    EXPECT_EQ(grid.Selected(), (Keys{1, 2, 3, 4})) << "5 is not there any longer";
    EXPECT_EQ(select(3, Qt::ShiftModifier), (Keys{1, 3})) << "between them only what may be";
    EXPECT_EQ(select(2, {}), Keys{2}) << "but by itself";
    grid.SetFocusKey(2);
    EXPECT_EQ(grid.Selected(), Keys{2});
    grid.SetFocusKey(4);
    EXPECT_EQ(grid.Selected(), Keys{4}) << "the owner's choice";

    // Without a pointer or a keyboard.
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&grid);
    accessible->child(0)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(grid.Selected(), (Keys{1, 4}));
    EXPECT_TRUE(accessible->child(0)->state().selected);
    EXPECT_TRUE(accessible->child(3)->state().selected);
    EXPECT_FALSE(accessible->child(1)->state().selected);
}

TEST_F(KeyGridTest, HomeAndEndWithShiftExtendTheSelection) {
    using Keys = std::vector<int>;
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(&grid, key, modifiers);
        return grid.Selected();
    };
    const Qt::KeyboardModifiers toAll = Qt::ShiftModifier | Qt::ControlModifier;
    EXPECT_EQ(press(Qt::Key_End, Qt::ShiftModifier), Keys{}) << "one key alone is selected at most";
    grid.SetSelects(true);
    EXPECT_EQ(press(Qt::Key_End, Qt::ShiftModifier), Keys{}) << "no key has the focus";
    grid.Reach(2);
    EXPECT_EQ(press(Qt::Key_End, Qt::ShiftModifier), (Keys{2, 3}));
    EXPECT_EQ(grid.FocusKey(), 3);
    EXPECT_EQ(press(Qt::Key_Home, Qt::ShiftModifier), (Keys{1, 2}));
    EXPECT_EQ(press(Qt::Key_End, toAll), (Keys{2, 3, 5}));
    EXPECT_EQ(press(Qt::Key_Home, Qt::ShiftModifier), (Keys{1, 2, 4})) << "the row with the focus";
    EXPECT_EQ(press(Qt::Key_Home, toAll), (Keys{1, 2}));
    std::vector<KeyCap> caps = TwoRows();
    caps[2].joinsRanges = caps[4].joinsRanges = false;
    grid.SetKeys(caps);
    grid.Reach(1);
    EXPECT_EQ(press(Qt::Key_End, Qt::ShiftModifier), (Keys{1, 2}));
    EXPECT_EQ(press(Qt::Key_End, toAll), (Keys{1, 2, 4}));
    EXPECT_EQ(grid.FocusKey(), 4);
}

TEST_F(KeyGridTest, ToolTipsShowNamesOfKeysAsTheyAre) {
    const QPoint middle = grid.KeyRect(2).center();
    QHelpEvent event(QEvent::ToolTip, middle, grid.mapToGlobal(middle));
    QApplication::sendEvent(&grid, &event);
    EXPECT_TRUE(QToolTip::text().contains(QStringLiteral("Tip 2 ")));
    EXPECT_FALSE(Qt::mightBeRichText(QToolTip::text()) &&
                 QToolTip::text().contains(QStringLiteral("<>")));
}

class ShippedKeyboard : public testing::TestWithParam<const char*> {};

TEST_P(ShippedKeyboard, ArrowsReachEveryKeyFromEveryKey) {
    QXKeyboardLayoutData layout;
    layout.SetLayoutPath(QX_LAYOUTS);
    ASSERT_TRUE(layout.OpenLayoutByName(GetParam()));
    QXLayoutDisplay display;
    display.SetLayoutSource(&layout);
    display.ReloadKeysSettings(KeyboardSequences());
    QXLayoutDisplayView view(display);
    KeyGrid copy; // whose moves do not redraw the display
    copy.SetKeys(view.Grid()->Keys());
    std::set<int> all;
    for (const KeyCap& cap : copy.Keys())
        all.insert(cap.index);
    EXPECT_GT(all.size(), 100U);
    const auto [steps, back] = ArrowSteps(copy);
    EXPECT_EQ(Reached(steps, *all.begin()), all);
    EXPECT_EQ(Reached(back, *all.begin()), all); // each key reaches the first, and so all
}

INSTANTIATE_TEST_SUITE_P(Views, ShippedKeyboard,
                         testing::Values("us.qxl", "uk.qxl", "german.qxl", "french.qxl",
                                         "spanish.qxl"));

// Only a part of the grid is painted again after each change.
TEST(KeyGridPainting, TheScreenShowsEveryChange) {
    KeyGrid grid;
    std::vector<KeyCap> caps = TwoRows();
    grid.SetKeys(caps);
    grid.SetSelects(true);
    grid.resize(900, 600);
    grid.show();
    grid.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&grid));
    grid.setFocus();
    const std::vector<std::function<void()>> changes = {
        [&] { grid.Pick(2); },
        [&] { grid.clearFocus(); },
        [&] { grid.setFocus(); },
        [&] { grid.Reach(5); },
        [&] {
            grid.Select({1, 2, 5});
        },
        [&] {
            grid.SetMarked({2, 3}, QStringLiteral("changed"));
        },
        [&] { grid.Select({3}); },
        [&] { grid.SetMarked({}, QString()); },
        [&] {
            caps[3].state = KeyState::Programmed;
            caps[2].isCurrent = true;
            grid.SetKeys(caps);
        },
        [&] {
            caps[0].group = caps[1].group = 7;
            grid.SetKeys(caps);
        },
        [&] {
            caps[1].group = 0;
            grid.SetKeys(caps);
        },
        [&] { grid.SetPointSize(14); }};
    for (std::size_t i = 0; i < changes.size(); ++i) {
        const QImage before = grid.grab().toImage();
        changes[i]();
        QCoreApplication::processEvents();
        const QImage screen = grid.screen()->grabWindow(grid.winId()).toImage();
        const QImage whole = grid.grab().toImage().convertToFormat(screen.format());
        EXPECT_EQ(screen, whole) << i;
        EXPECT_NE(whole, before) << i;
    }
}

} // namespace
} // namespace qx::views
