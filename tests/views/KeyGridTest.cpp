// The key grid: every key within reach of arrows, pointer and screen readers, and drawn so that the
// states differ without colours.
#include "views/KeyGrid.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"
#include "views/QXLayoutDisplayView.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <set>
#include <utility>

namespace qx::views {
namespace {

KeyCap Cap(int index, const QRectF& place) {
    KeyCap cap;
    cap.index = index;
    cap.place = place;
    cap.caption = QStringLiteral("K%1").arg(index);
    cap.name = QStringLiteral("Key %1").arg(index);
    cap.toolTip = QStringLiteral("Tip %1 <>").arg(index);
    cap.color = Qt::lightGray;
    cap.state = KeyState::Empty;
    return cap;
}

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
    grid.SetControlMoves(true); // unless the owner wants it
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

// What is picked is the anchor of the selection, which is never empty once there is one.
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

TEST_F(KeyGridTest, ToolTipsShowNamesOfKeysAsTheyAre) {
    const QPoint middle = grid.KeyRect(2).center();
    QHelpEvent event(QEvent::ToolTip, middle, grid.mapToGlobal(middle));
    QApplication::sendEvent(&grid, &event);
    EXPECT_TRUE(QToolTip::text().contains(QStringLiteral("Tip 2 ")));
    EXPECT_FALSE(Qt::mightBeRichText(QToolTip::text()) &&
                 QToolTip::text().contains(QStringLiteral("<>")));
}

// All that is drawn of a cap, without its colours: how bright each pixel is.
QImage Picture(const KeyCap& cap, int focused = -1) {
    QImage image(80, 80, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintKeyCaps(painter, image.rect(), {cap}, {8, 6}, focused);
    painter.end();
    return image.convertToFormat(QImage::Format_Grayscale8);
}

int DifferentPixels(const QImage& a, const QImage& b) {
    int different = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            different += std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > 40 ? 1 : 0;
    return different;
}

TEST(KeyPaintingTest, StatesDifferByMoreThanColour) {
    for (const QColor& color : {QColor(Qt::blue), QColor(Qt::yellow), QColor(60, 60, 60)}) {
        std::vector<QImage> pictures;
        for (const KeyState state : {KeyState::Unused, KeyState::Empty, KeyState::Programmed})
            for (const bool isCurrent : {false, true}) {
                KeyCap cap = Cap(1, {0, 0, 100, 100});
                cap.color = color;
                cap.state = state;
                cap.isCurrent = isCurrent;
                pictures.push_back(Picture(cap));
                EXPECT_GT(DifferentPixels(Picture(cap), Picture(cap, 1)), 100) << "focus";
            }
        for (std::size_t a = 0; a < pictures.size(); ++a)
            for (std::size_t b = a + 1; b < pictures.size(); ++b)
                EXPECT_GT(DifferentPixels(pictures[a], pictures[b]), 60) << a << " and " << b;
    }
}

TEST(KeyPaintingTest, LongTextsStayInsideTheirCaps) {
    for (const QString& text : {QStringLiteral("WWWWWWWWWWWWWWWWWW"), QStringLiteral("NumEnter"),
                                QStringLiteral("Subtotal with discount and tax")}) {
        KeyCap cap = Cap(1, {0, 0, 100, 100});
        cap.caption = cap.legend = text;
        const KeyPlacing placing({cap}, QRectF(0, 0, 40, 40), 1);
        const QRectF rect = placing.Map(cap.place);
        const std::vector<KeyText> texts = KeyTexts(rect, cap, placing, {8});
        EXPECT_GE(texts.size(), 2U);
        for (const KeyText& shown : texts)
            EXPECT_TRUE(rect.contains(QRectF(shown.at, shown.text.size())))
                << shown.text.text().toStdString();
    }
}

QString Shown(const std::vector<KeyText>& texts) {
    QString shown;
    for (const KeyText& text : texts)
        shown += text.text.text();
    return shown.remove(u' ');
}

// Every caption of the shipped layouts fits its key, at each size that people choose.
TEST(KeyPaintingTest, CaptionsThatFitAreShownWhole) {
    for (const char* name : {"us.qxl", "uk.qxl", "german.qxl", "french.qxl", "spanish.qxl"}) {
        QXKeyboardLayoutData layout;
        layout.SetLayoutPath(QX_LAYOUTS);
        ASSERT_TRUE(layout.OpenLayoutByName(name));
        QXLayoutDisplay display;
        display.SetLayoutSource(&layout);
        display.ReloadKeysSettings(KeyboardSequences());
        const QXLayoutDisplayView view(display);
        const std::vector<KeyCap>& caps = view.Grid()->Keys();
        for (const int width : {960, 1100, 1900}) {
            const KeyPlacing placing(caps, QRectF(0, 0, width, width / 2), 1);
            for (const int points : {6, 8, 10, 14})
                for (KeyCap cap : caps) {
                    cap.legend.clear();
                    const auto texts = KeyTexts(placing.Map(cap.place), cap, placing,
                                                {static_cast<double>(points)});
                    EXPECT_EQ(Shown(texts), QString(cap.caption).remove(u' '))
                        << name << " at " << points << " points, " << width << " pixels";
                }
        }
    }
}

TEST(KeyPaintingTest, ALongTextIsCutAtItsEndOnly) {
    KeyCap cap = Cap(1, {0, 0, 700, 600});
    cap.caption = QStringLiteral("Milk 1 l, low-fat, from the farm next door, in bottles of glass");
    const KeyPlacing placing({cap}, QRectF(0, 0, 70, 60), 1);
    const std::vector<KeyText> texts = KeyTexts(placing.Map(cap.place), cap, placing, {8});
    ASSERT_GE(texts.size(), 2U);
    QString whole;
    for (std::size_t line = 0; line + 1 < texts.size(); ++line)
        whole += texts[line].text.text() + u' ';
    EXPECT_TRUE(cap.caption.startsWith(whole)) << whole.toStdString();
    EXPECT_TRUE(texts.back().text.text().endsWith(u'\u2026'));

    // Two sizes of captions stay apart.
    cap.caption = QStringLiteral("7");
    const auto pixels = [&](double scale) {
        cap.textScale = scale;
        return KeyTexts(placing.Map(cap.place), cap, placing, {12}).front().font.pixelSize();
    };
    EXPECT_EQ(pixels(1.25) * 4, pixels(1) * 5);
}

TEST(KeyPaintingTest, SystemColoursFollowThePalette) {
    EXPECT_EQ(ToQColor(0x00112233), QColor(0x33, 0x22, 0x11));
    const auto face = static_cast<std::int32_t>(0x8000000FU);
    const auto unknown = static_cast<std::int32_t>(0x800000FFU);
    EXPECT_EQ(ToQColor(face), QGuiApplication::palette().color(QPalette::Button));
    EXPECT_TRUE(ToQColor(unknown).isValid());
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

} // namespace
} // namespace qx::views
