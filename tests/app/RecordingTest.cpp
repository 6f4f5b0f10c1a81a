// Keys recorded in the inspector, and what one step of undo is while they are put in.
#include "Hands.h"

#include <QClipboard>
#include <QLineEdit>

namespace qx::test {
namespace {

class Recording : public Hands {
protected:
    // A key of a page.
    void Select(const char* page, const char* grid, int key) {
        desk.Page(page);
        desk.window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(desk.window.get()));
        desk.ClickKey(grid, key);
    }
};

TEST_F(Recording, GivesTheFocusBackToTheKeys) {
    Select("layeredFuncKeys", "funcKeys", 3);
    auto* grid = desk.Find<views::KeyGrid>("funcKeys");
    Keys(*grid, {Qt::CTRL | Qt::SHIFT | Qt::Key_R});
    auto* record = desk.Find<QToolButton>("record");
    EXPECT_TRUE(record->hasFocus());
    Keys(*record, {Qt::Key_Pause});
    EXPECT_FALSE(record->isChecked());
    EXPECT_TRUE(grid->hasFocus());
}

#ifndef Q_OS_WIN // whose scan codes are others
// The first press makes a block of the key, which has another title from then on.
TEST_F(Recording, OfAPosKeyMakesABlockAndGoesOn) {
    const auto recordChord = [&] {
        Select("pos", "posDisplay", 105);
        desk.Click("record");
        struct {
            QEvent::Type type;
            int key;
            quint32 scanCode;
        } const events[] = {{QEvent::KeyPress, Qt::Key_Control, 29},
                            {QEvent::KeyPress, Qt::Key_A, 30},
                            {QEvent::KeyRelease, Qt::Key_A, 30},
                            {QEvent::KeyRelease, Qt::Key_Control, 29}};
        for (const auto& each : events) {
            QKeyEvent event(each.type, each.key, Qt::NoModifier, each.scanCode + 8, 0, 0);
            QApplication::sendEvent(desk.Find<QToolButton>("record"), &event);
        }
        desk.Click("record");
    };
    const auto block = [&](Long size) {
        desk.Write();
        return desk.Memory(MODULE_POS, Long{104} * 32, size);
    };
    recordChord();
    EXPECT_EQ(block(6), Bytes("00 3A 1F 9F BA 00"));
    recordChord(); // the next step
    EXPECT_EQ(block(10), Bytes("00 3A 1F 9F BA 3A 1F 9F BA 00"));
    ExpectSteps(2);
    EXPECT_EQ(block(1), Bytes("FF")) << "in no block";
}
#endif

// A keyboard that reports its keys does not type: not longer than they are recorded.
TEST_F(Recording, KeysOfTheConnectedKeyboardAreRecorded) {
    Select("layeredFuncKeys", "funcKeys", 3);
    const auto reports = [&] { return desk.workbench.Session().Access().IsPositionProgMode(); };
    desk.Click("recordDevice");
    EXPECT_TRUE(reports());
    for (const Long code : {58, 31, 159, 300, 186})
        desk.workbench.Simulated()->QueuePositionKey(code);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return desk.Find<QLineEdit>("receivedCodes")->text() == QStringLiteral("Ctrl A ^A ^Ctrl");
    }));
    desk.ClickKey("funcKeys", 4);
    EXPECT_FALSE(reports());
    EXPECT_FALSE(desk.Find<QToolButton>("recordDevice")->isChecked());

    desk.Click("recordDevice");
    EXPECT_EQ(desk.Write().size(), 1);
    EXPECT_FALSE(reports()) << "while it is written";
    EXPECT_EQ(desk.Memory(MODULE_LAYERED_FUNCKEYS, 3 * 128, 5), Bytes("3A 1F 9F BA 00"));
    desk.UndoAction().trigger();
    EXPECT_FALSE(desk.workbench.History().CanUndo()) << "a recording is one step";

    desk.Click("recordDevice");
    TraceLog log;
    desk.workbench.Disconnect();
    EXPECT_EQ(std::ranges::count(log.lines, "DisablePositionProgMode OK"), 1);
    EXPECT_THROW(desk.Find<QToolButton>("recordDevice"), std::runtime_error);
}

TEST_F(Recording, UndoTakesBackTheKeysAndNotTheTextThatMadeThem) {
    Select("layeredFuncKeys", "funcKeys", 0);
    auto* typed = desk.Find<QLineEdit>("typedText");
    const auto press = [](QWidget* widget, QKeyCombination key) {
        QTest::keyClick(widget, key.key(), key.keyboardModifiers());
    };
    typed->setFocus();
    QTest::keyClicks(typed, QStringLiteral("10"));
    press(typed, Qt::CTRL | Qt::Key_Return);
    press(typed, Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(typed->text(), QString());
    EXPECT_FALSE(desk.workbench.History().CanUndo());
    press(typed, Qt::CTRL | Qt::Key_Y);
    typed->setFocus();
    press(typed, Qt::Key_5);
    press(typed, Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(typed->text(), QString()) << "what has not been used is the field's own";

    auto* search = desk.Find<QLineEdit>("searchKey");
    search->setFocus();
    QTest::keyClicks(search, QStringLiteral("pgup"));
    press(search, Qt::Key_Return);
    EXPECT_EQ(search->text(), QString());
    EXPECT_TRUE(search->hasFocus());
    press(search, Qt::CTRL | Qt::Key_Z);
    desk.Write();
    EXPECT_EQ(desk.Memory(MODULE_LAYERED_FUNCKEYS, 0, 7), Bytes("02 82 0B 8B 2B AB 00"));
    ExpectSteps(1);
}

TEST_F(Recording, UndoSelectsTheKeysThatItChanges) {
    Select("layeredFuncKeys", "funcKeys", 0);
    auto* grid = desk.Find<views::KeyGrid>("funcKeys");
    QApplication::clipboard()->setText(QStringLiteral("1"));
    grid->Select({3, 4, 15});
    QTest::keyClick(grid, Qt::Key_V, Qt::ControlModifier);
    desk.ClickKey("funcKeys", 8);
    desk.UndoAction().trigger();
    EXPECT_EQ(grid->Selected(), (std::vector<int>{3, 4, 15}));
    EXPECT_TRUE(grid->hasFocus()) << "the next Ctrl+Z is the window's";
}

} // namespace
} // namespace qx::test
