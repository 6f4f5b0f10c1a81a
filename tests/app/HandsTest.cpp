// Keys under the user's hands: copied, cleared, filled and dragged, several at once, by the pointer
// and by the keyboard; each is one step, and reaches the keyboard's memory.
#include "Hands.h"

#include <QClipboard>
#include <QMenuBar>
#include <QMimeData>

namespace qx::test {
namespace {

// "1E" is the press of A, "9E" its release.
TEST_F(Hands, AKeyIsProgrammedCopiedMovedAndClearedByTheKeyboardAlone) {
    KeyGrid& grid = Layers();
    Keys(grid, {Qt::Key_Home, Qt::Key_A});
    Type("");
    Type("1", Qt::ControlModifier); // and Enter
    Keys(*desk.Find<QLineEdit>("typedText"), {Qt::Key_Escape});
    EXPECT_TRUE(grid.hasFocus());
    Keys(grid, {Qt::CTRL | Qt::Key_C, Qt::Key_Right, Qt::CTRL | Qt::Key_V});
    Keys(grid, {Qt::CTRL | Qt::Key_D}); // to the third
    EXPECT_EQ(grid.Selected(), std::vector<int>{2});
    Keys(grid, {Qt::CTRL | Qt::Key_X, Qt::Key_Down, Qt::CTRL | Qt::Key_V});
    Keys(grid, {Qt::Key_Home, Qt::Key_Delete});
    EXPECT_EQ(Write(), 2);
    const std::string codes = Bytes("1F 9F 02 82 2B AB 00");
    EXPECT_EQ(Slot(0, 1), Bytes("00"));
    EXPECT_EQ(Slot(1, 7), codes);
    EXPECT_EQ(Slot(2, 1), Bytes("00"));
    EXPECT_EQ(Slot(14, 7), codes);

    // Onto another module, through the clipboard.
    KeyGrid& free = Grid("freeProgKeys", "layoutDisplay");
    Click(free, 75);
    Keys(free, {Qt::CTRL | Qt::Key_V});
    EXPECT_EQ(Write(), 1);
    EXPECT_EQ(desk.Memory(MODULE_FREEPROGRAMMABLE_KEYS, 0, 7), codes);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "A ^A 1 ^1 Enter ^Enter");
    ExpectSteps(8);
}

#ifndef Q_OS_WIN // whose scan codes are others
TEST_F(Hands, AChordIsRecordedWithoutAPointer) {
    KeyGrid& grid = Layers();
    Keys(grid, {Qt::Key_Home, Qt::CTRL | Qt::SHIFT | Qt::Key_R});
    auto* record = desk.Find<QToolButton>("record");
    EXPECT_TRUE(record->hasFocus());
    const auto send = [&](QEvent::Type type, int key, quint32 scanCode) {
        QKeyEvent event(type, key, Qt::NoModifier, scanCode + 8, 0, 0);
        QApplication::sendEvent(record, &event);
    };
    send(QEvent::KeyRelease, Qt::Key_R, 19); // the shortcut's keys are not recorded
    send(QEvent::KeyRelease, Qt::Key_Shift, 42);
    send(QEvent::KeyRelease, Qt::Key_Control, 29);
    send(QEvent::KeyPress, Qt::Key_Control, 29);
    send(QEvent::KeyPress, Qt::Key_A, 30);
    send(QEvent::KeyRelease, Qt::Key_A, 30);
    send(QEvent::KeyRelease, Qt::Key_Control, 29);
    send(QEvent::KeyPress, Qt::Key_Pause, 119);
    EXPECT_FALSE(record->isChecked());
    send(QEvent::KeyPress, Qt::Key_A, 30); // no longer recorded
    Write();
    EXPECT_EQ(Slot(0), Bytes("3A 1F 9F BA 00"));
}
#endif

TEST_F(Hands, TheMenuNamesTheKeyAndPastesText) {
    KeyGrid& grid = Layers();
    QApplication::clipboard()->setText(QStringLiteral(" Ctrl+C \n"));
    const QPoint middle = grid.KeyRect(4).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, middle, grid.mapToGlobal(middle));
    QApplication::sendEvent(&grid, &event);
    auto* menu = grid.findChild<QMenu*>(QStringLiteral("keyMenu"));
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions().front()->text().toStdString(), "Layer 0, F5");
    for (const QAction* action : menu->actions()) {
        EXPECT_TRUE(action->isSeparator() || action == menu->actions().front() ||
                    (!action->icon().isNull() && !action->shortcut().isEmpty()))
            << action->text().toStdString();
        EXPECT_FALSE(action->isEnabled() && action->objectName() == QStringLiteral("clearSelected"))
            << "there is nothing to clear";
    }
    for (QAction* action : menu->actions())
        if (action->objectName() == QStringLiteral("pasteKeys"))
            action->trigger();
    menu->close();
    QMenu* edit = desk.window->menuBar()->actions()[1]->menu();
    for (int time = 0; time < 2; ++time) { // once each time that it is shown
        emit edit->aboutToShow();
        EXPECT_EQ(
            std::ranges::count(edit->actions(), QStringLiteral("pasteKeys"), &QObject::objectName),
            1);
    }
    EXPECT_EQ(Write(), 1);
    EXPECT_EQ(Slot(4), Bytes("3A 30 B0 BA 00"));

    for (const char* text : {"", "Hyper+C", "[[300]]"}) {
        QApplication::clipboard()->setText(QString::fromLatin1(text));
        Keys(grid, {Qt::CTRL | Qt::Key_V});
        EXPECT_EQ(desk.Notice().toStdString(), "The clipboard has no key sequence.") << text;
    }
    for (const char* json : {R"([{"codes":[1,0]}])", R"([{"codes":[256]}])", "{}",
                             R"([{"codes":["A"]}])", R"([{"description":"A"}])", "["}) {
        auto* data = new QMimeData;
        data->setData(QStringLiteral("application/x-qxcontrols-keys+json"), json);
        QApplication::clipboard()->setMimeData(data);
        Keys(grid, {Qt::CTRL | Qt::Key_V});
        EXPECT_EQ(desk.Notice().toStdString(), "The clipboard has no key sequence.") << json;
    }
    ExpectSteps(1);
}

TEST_F(Hands, SeveralKeysArePastedIntoFilledAndCleared) {
    KeyGrid& grid = Layers();
    Click(grid, 0);
    Keys(grid, {Qt::Key_Return});
    Type("a");
    grid.setFocus();
    Keys(grid, {Qt::CTRL | Qt::Key_C});
    // A rectangle of six, less one, and one elsewhere.
    Click(grid, 3);
    Click(grid, 17, Qt::ShiftModifier);
    Click(grid, 16, Qt::ControlModifier);
    Click(grid, 23, Qt::ControlModifier);
    EXPECT_EQ(grid.Selected(), (std::vector<int>{3, 4, 5, 15, 17, 23}));
    EXPECT_FALSE(desk.Find<QLineEdit>("txtSymbolDesc")->isEnabled()) << "it is one key's";
    desk.Click("pasteKeys");
    Write();
    for (int key = 0; key < 24; ++key)
        EXPECT_EQ(Slot(key, 3) == Bytes("1F 9F 00"), key == 0 || grid.IsSelected(key)) << key;

    QTest::keyClicks(desk.Find<QLineEdit>("seriesText"), QStringLiteral("b"));
    QTest::keyClick(desk.Find<QLineEdit>("seriesText"), Qt::Key_Return);
    Write();
    EXPECT_EQ(Slot(3, 7), Bytes("32 B2 0B 8B 02 82 00")); // b01
    EXPECT_EQ(Slot(23, 7), Bytes("32 B2 0B 8B 07 87 00"));

    // Several onto as many.
    Click(grid, 3);
    Click(grid, 4, Qt::ShiftModifier);
    Keys(grid, {Qt::CTRL | Qt::Key_C});
    Click(grid, 6);
    Click(grid, 7, Qt::ShiftModifier);
    Keys(grid, {Qt::CTRL | Qt::Key_V});
    Write();
    EXPECT_EQ(Slot(6, 7), Bytes("32 B2 0B 8B 02 82 00"));
    EXPECT_EQ(Slot(7, 7), Bytes("32 B2 0B 8B 03 83 00"));

    // By the keyboard: the first four of the second row, less the second of them.
    grid.setFocus();
    Keys(grid, {Qt::Key_Home, Qt::Key_Down, Qt::SHIFT | Qt::Key_Right, Qt::SHIFT | Qt::Key_Right,
                Qt::SHIFT | Qt::Key_Right, Qt::CTRL | Qt::Key_Left, Qt::CTRL | Qt::Key_Left,
                Qt::CTRL | Qt::Key_Space});
    EXPECT_EQ(grid.Selected(), (std::vector<int>{12, 14, 15}));
    Keys(grid, {Qt::CTRL | Qt::Key_A});
    EXPECT_EQ(grid.Selected().size(), 24U);
    Keys(grid, {Qt::Key_Delete});
    Write();
    for (int key = 0; key < 24; ++key)
        EXPECT_EQ(Slot(key, 1), Bytes("00")) << key;

    grid.Select({6, 7});
    grid.setFocus();
    Keys(grid, {Qt::CTRL | Qt::Key_V});
    EXPECT_EQ(desk.Notice().toStdString(), "Pasted into 2 keys.");
    desk.Click("noticeOffer"); // Undo
    EXPECT_EQ(desk.Notice(), QString());
    EXPECT_EQ(Write(), 0);
    ExpectSteps(5);
}

TEST_F(Hands, WhatIsOverwrittenIsReportedAndCanBeBroughtBack) {
    KeyGrid& grid = Layers();
    QApplication::clipboard()->setText(QStringLiteral("A ^A\nB ^B\nC ^C"));
    grid.Select({0, 1, 2});
    Keys(grid, {Qt::CTRL | Qt::Key_V});
    const std::string pasted[] = {Bytes("1F 9F 00"), Bytes("32 B2 00"), Bytes("30 B0 00")};
    Desk::Drag(grid, grid.KeyRect(0).center(), grid.KeyRect(1).center());
    EXPECT_EQ(desk.Notice().toStdString(), "Layer 0, F2 overwritten.");
    EXPECT_EQ(grid.Selected(), std::vector<int>{1});
    Write();
    EXPECT_EQ(Slot(1, 3), pasted[0]);
    Desk::Drag(grid, grid.KeyRect(2).center(), grid.KeyRect(1).center());
    desk.Click("noticeOffer");
    Write();
    EXPECT_EQ(Slot(1, 3), pasted[0]);

    Click(grid, 2);
    grid.setFocus();
    QApplication::clipboard()->setText(QStringLiteral("B ^B"));
    Keys(grid, {Qt::CTRL | Qt::Key_V});
    EXPECT_EQ(desk.Notice().toStdString(), "Layer 0, F3 overwritten.");
    desk.Click("noticeOffer");
    EXPECT_EQ(Write(), 0);
    EXPECT_EQ(Slot(2, 3), pasted[2]);
}

// Also where no key press and no click comes before an edit: `act` does what the tools of users who
// cannot see the screen do.
TEST_F(Hands, AnOfferToUndoIsOnlyForTheEditThatItNames) {
    KeyGrid& grid = Layers();
    const auto act = [&](const char* action) {
        for (QAction* each : grid.actions())
            if (each->objectName() == QLatin1String(action))
                return each->trigger();
        ADD_FAILURE() << action;
    };
    QApplication::clipboard()->setText(QStringLiteral("A ^A"));
    grid.Select({0, 1});
    Keys(grid, {Qt::CTRL | Qt::Key_V});
    EXPECT_EQ(desk.Notice().toStdString(), "Pasted into 2 keys.");
    Keys(grid, {Qt::CTRL | Qt::Key_V});
    EXPECT_EQ(desk.Notice(), QString()) << "it has changed nothing";
    Keys(grid, {Qt::CTRL | Qt::Key_T});
    EXPECT_EQ(desk.Notice(), QString()) << "they are the same";
    grid.Select({2, 3});
    Keys(grid, {Qt::CTRL | Qt::Key_V, Qt::CTRL | Qt::Key_Z});
    EXPECT_EQ(desk.Notice(), QString()) << "its edit is undone";

    grid.Select({2, 3});
    act("pasteKeys");
    EXPECT_EQ(desk.Notice().toStdString(), "Pasted into 2 keys.");
    grid.Select({0});
    act("clearSelected"); // reports nothing
    EXPECT_EQ(desk.Notice(), QString()) << "another edit came after it";
    grid.Select({1, 2});
    act("clearSelected");
    act("pasteKeys");
    EXPECT_EQ(desk.Notice().toStdString(), "Pasted into 2 keys.") << "and not the one before";
    desk.UndoAction().trigger();
    EXPECT_EQ(desk.Notice(), QString());
    Write();
    const std::string a = Bytes("1F 9F 00");
    for (int key = 0; key < 4; ++key)
        EXPECT_EQ(Slot(key, 3) == a, key == 3) << key;
}

TEST_F(Hands, WhatDoesNotFitIsRefusedAndNothingIsLost) {
    KeyGrid& layers = Layers();
    Click(layers, 0);
    Keys(layers, {Qt::Key_Return});
    Type("1234567890123456789"); // 38 codes
    layers.setFocus();
    Keys(layers, {Qt::CTRL | Qt::Key_C});
    KeyGrid& free = Grid("freeProgKeys", "layoutDisplay");
    Click(free, 76);
    const std::string before = desk.Document();
    Keys(free, {Qt::CTRL | Qt::Key_V});
    EXPECT_EQ(desk.Notice().toStdString(), "Key 76 (Del) has room for 32 codes, but the sequence "
                                           "has 38. Nothing has been changed.");
    Click(free, 31, Qt::ControlModifier); // A, which cannot be programmed
    QApplication::clipboard()->setText(QStringLiteral("1"));
    Keys(free, {Qt::CTRL | Qt::Key_V});
    EXPECT_EQ(desk.Notice().toStdString(),
              "Key 31 (A) cannot be programmed. Nothing has been changed.");
    QApplication::clipboard()->setText(QStringLiteral("1\n2\n3"));
    Keys(free, {Qt::CTRL | Qt::Key_V});
    EXPECT_EQ(desk.Notice().toStdString(),
              "3 sequences were copied: select as many keys to paste them.");
    EXPECT_EQ(desk.Document(), before);
}

TEST_F(Hands, KeysAreDraggedOntoOthersAndABandSelects) {
    KeyGrid& grid = Layers();
    Click(grid, 0);
    Keys(grid, {Qt::Key_Return});
    Type("a");
    const auto middle = [&](int key) { return grid.KeyRect(key).center(); };
    Desk::Drag(grid, middle(0), middle(5));                    // a copy
    Desk::Drag(grid, middle(5), middle(7), Qt::ShiftModifier); // swapped with nothing
    Desk::Drag(grid, middle(0), QPoint(1, 1));                 // beside the keys
    Desk::Drag(grid, middle(12), middle(14));                  // free: a band
    EXPECT_EQ(grid.Selected(), (std::vector<int>{12, 13, 14}));
    Desk::Drag(grid, middle(20), middle(21), Qt::ControlModifier);
    EXPECT_EQ(grid.Selected(), (std::vector<int>{12, 13, 14, 20, 21}));
    // Esc gives up.
    QTest::mousePress(&grid, Qt::LeftButton, {}, middle(0));
    QMouseEvent move(QEvent::MouseMove, middle(9), grid.mapToGlobal(middle(9)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&grid, &move);
    Keys(grid, {Qt::Key_Escape});
    QTest::mouseRelease(&grid, Qt::LeftButton, {}, middle(9));
    Write();
    for (int key = 0; key < 24; ++key)
        EXPECT_EQ(Slot(key, 3) == Bytes("1F 9F 00"), key == 0 || key == 7) << key;
    // Swapped by the keyboard: the first with the eighth, which has other keys by then.
    QTest::mouseDClick(&grid, Qt::LeftButton, {}, middle(7));
    EXPECT_TRUE(desk.Find<QLineEdit>("typedText")->hasFocus());
    Type("b");
    Click(grid, 0);
    grid.setFocus();
    Click(grid, 7, Qt::ControlModifier);
    Keys(grid, {Qt::CTRL | Qt::Key_T});
    Write();
    EXPECT_EQ(Slot(0, 5), Bytes("1F 9F 32 B2 00"));
    EXPECT_EQ(Slot(7, 3), Bytes("1F 9F 00"));
    ExpectSteps(5);
}

// A drag from a key of the selected block carries what it sends; any other draws a band.
TEST_F(Hands, ThePosBlockThatIsSelectedIsDraggedOntoOtherKeys) {
    KeyGrid& grid = Grid("pos", "posDisplay");
    const auto middle = [&](int key) { return grid.KeyRect(key).center(); };
    const auto record = [&](int key, Long size) {
        return desk.Memory(MODULE_POS, Long{key - 1} * 32, size);
    };
    Desk::Drag(grid, middle(1), middle(2));
    Keys(grid, {Qt::CTRL | Qt::Key_J});
    Desk::Drag(grid, middle(1), middle(16));
    EXPECT_EQ(grid.Selected(), (std::vector<int>{1, 16})) << "it sends nothing yet";
    Click(grid, 1);
    desk.Click("key_31");
    Click(grid, 20);
    desk.Click("key_50"); // B
    Desk::Drag(grid, middle(1), middle(3));
    EXPECT_EQ(grid.Selected(), (std::vector<int>{1, 2, 3})) << "it was not selected";
    Desk::Drag(grid, middle(1), middle(3));
    EXPECT_EQ(grid.Selected(), (std::vector<int>{1, 2, 3})) << "nor alone";
    Click(grid, 1);
    Desk::Drag(grid, middle(2), middle(1)); // of the block itself
    Desk::Drag(grid, middle(2), middle(5));
    EXPECT_EQ(grid.Selected(), std::vector<int>{5});
    Write();
    EXPECT_EQ(record(1, 4), Bytes("01 1F 9F 00"));
    EXPECT_EQ(record(2, 2), Bytes("01 00"));
    EXPECT_EQ(record(5, 4), Bytes("00 1F 9F 00"));
    Click(grid, 20);
    Desk::Drag(grid, middle(20), middle(2), Qt::ShiftModifier);
    Write();
    EXPECT_EQ(record(1, 4), Bytes("01 32 B2 00"));
    EXPECT_EQ(record(2, 2), Bytes("01 00"));
    EXPECT_EQ(record(20, 4), Bytes("00 1F 9F 00"));
    ExpectSteps(5);
}

} // namespace
} // namespace qx::test
