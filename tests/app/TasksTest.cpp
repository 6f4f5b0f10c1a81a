// The tasks that docs/interactions.md counts, from the Overview to the keyboard's memory, by the
// pointer alone and by the keyboard alone; every click and key goes through the window system.
#include "Hands.h"

#include <QWindow>

namespace qx::test {
namespace {

class Tasks : public Hands {
protected:
    void SetUp() override { Activate(*desk.window); }
    // Does what window managers do with a window that opens, or that another one closes above.
    static void Activate(QWidget& window) {
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &window; }));
    }
    // The steps since the last time.
    int Steps() { return std::exchange(m_steps, 0); }

    void Point(QWidget& widget, const QPoint& at, Qt::MouseButton button = Qt::LeftButton) {
        ++m_steps;
        ClickAt(widget, at, button);
    }
    void PointAt(const char* name) {
        auto* widget = desk.Find<QWidget>(name);
        Point(*widget, widget->rect().center());
    }
    void PointAtPage(const char* title) {
        auto* pages = desk.Find<QListWidget>("pages");
        const auto found = pages->findItems(QString::fromLatin1(title), Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << title;
        Point(*pages->viewport(), pages->visualItemRect(found.front()).center());
    }
    void PointAtKey(const char* grid, int key, Qt::MouseButton button = Qt::LeftButton) {
        auto* keys = desk.Find<KeyGrid>(grid);
        Point(*keys, keys->KeyRect(key).center(), button);
    }
    void PointInMenu(std::initializer_list<const char*> path) {
        m_steps += static_cast<int>(path.size());
        Choose(path);
    }
    void DrawBand(const char* grid, int from, int to) {
        ++m_steps;
        auto* keys = desk.Find<KeyGrid>(grid);
        QWindow* window = desk.window->windowHandle();
        const auto middle = [&](int key) {
            return keys->mapTo(desk.window.get(), keys->KeyRect(key).center());
        };
        QTest::mousePress(window, Qt::LeftButton, {}, middle(from));
        QTest::mouseMove(window, (middle(from) + middle(to)) / 2);
        QTest::mouseMove(window, middle(to));
        QTest::mouseRelease(window, Qt::LeftButton, {}, middle(to));
    }
    void Press(std::initializer_list<QKeyCombination> keys) {
        for (const QKeyCombination& key : keys) {
            ++m_steps;
            QTest::keyClick(desk.window->windowHandle(), key.key(), key.keyboardModifiers());
        }
    }
    // In the menu that the next key opens.
    void PressInMenu(std::initializer_list<Qt::Key> keys) {
        m_steps += static_cast<int>(keys.size());
        TypeInMenu(keys);
    }
    // Writes what the review shows, and comes back to the Overview.
    void WriteByPointer() {
        const auto written = desk.InDialog([](QWidget& review) {
            auto* write = review.findChild<QWidget*>(QStringLiteral("cmdWrite"));
            ClickAt(*write, write->rect().center(), Qt::LeftButton);
        });
        for (auto* button : desk.window->findChildren<QToolButton*>())
            if (button->isVisible() && button->text() == QStringLiteral("Write to keyboard"))
                ClickAt(*button, button->rect().center(), Qt::LeftButton);
        EXPECT_TRUE(written.isNull()) << "no review";
        PointAtPage("Overview");
        Steps();
    }
    void WriteByKeyboard() {
        const auto written = desk.InDialog([](QWidget& review) {
            Activate(review);
            QTest::keyClick(review.windowHandle(), Qt::Key_W, Qt::AltModifier);
            EXPECT_TRUE(QTest::qWaitFor([&] { return !review.isVisible(); })); // soon
        });
        Press({Qt::CTRL | Qt::SHIFT | Qt::Key_W});
        EXPECT_TRUE(written.isNull()) << "no review";
        Activate(*desk.window);
        Press({Qt::ALT | Qt::Key_1});
        Steps();
    }
    std::string Free(Long size) { return desk.Memory(MODULE_FREEPROGRAMMABLE_KEYS, 0, size); }
    // What is in the memory of a POS key: the number within its block, and the sequence.
    std::string Pos(int key, Long size) {
        return desk.Memory(MODULE_POS, Long{key - 1} * 32, size);
    }

private:
    int m_steps = 0;
};

// "1F" is the press of A, "9F" its release; 3A and BA those of Ctrl, 02 that of 1, 0B that of 0,
// 2B that of Enter.
TEST_F(Tasks, ByThePointerAlone) {
    PointAtKey("keyboardPicture", 75); // Ins
    PointAt("key_31");
    EXPECT_EQ(Steps(), 2) << "one character";
    WriteByPointer();
    EXPECT_EQ(Free(3), Bytes("1F 9F 00"));

    PointAtKey("keyboardPicture", 75);
    PointAt("hold_58");
    PointAt("key_31");
    EXPECT_EQ(Steps(), 3) << "a chord";
    WriteByPointer();
    EXPECT_EQ(Free(7), Bytes("1F 9F 3A 1F 9F BA 00"));

    PointAtKey("keyboardPicture", 75);
    PointAt("key_2");
    PointAt("key_11");
    PointAt("addTextAndEnter");
    EXPECT_EQ(Steps(), 4) << "10 Enter";
    WriteByPointer();
    EXPECT_EQ(Free(13), Bytes("1F 9F 3A 1F 9F BA 02 82 0B 8B 2B AB 00"));

    PointAtPage("Layered function keys");
    PointAtKey("funcKeys", 5);
    PointAt("key_31");
    WriteByPointer();
    PointAtPage("Layered function keys");
    PointAtKey("funcKeys", 5, Qt::RightButton);
    PointInMenu({"Copy"});
    DrawBand("funcKeys", 12, 23);
    PointAt("pasteKeys");
    EXPECT_EQ(Steps(), 5) << "a key to twelve others";
    WriteByPointer();
    for (int key = 0; key < 24; ++key)
        EXPECT_EQ(Slot(key, 3) == Bytes("1F 9F 00"), key == 5 || key >= 12) << key;

    PointAtPage("Layered function keys");
    auto* tabs = desk.Find<QTabBar>("layers");
    Point(*tabs, tabs->tabRect(0).center(), Qt::RightButton);
    PointInMenu({"Swap with layer", "9"});
    EXPECT_EQ(Steps(), 4) << "two layers";
    WriteByPointer();
    EXPECT_EQ(Slot(5, 1), Bytes("00"));
    EXPECT_EQ(Slot(9 * 24 + 5, 3), Bytes("1F 9F 00"));

    PointAtPage("POS keys");
    DrawBand("posDisplay", 1, 17);
    PointAt("joinKeys");
    EXPECT_EQ(Steps(), 3) << "four POS keys";
    PointAt("key_31");
    WriteByPointer();
    EXPECT_EQ(Pos(1, 4), Bytes("01 1F 9F 00"));
    for (const int key : {2, 16, 17})
        EXPECT_EQ(Pos(key, 2), Bytes("01 00")) << key;
}

TEST_F(Tasks, ByTheKeyboardAlone) {
    Press({Qt::ALT | Qt::Key_4, Qt::Key_A, Qt::Key_Return});
    EXPECT_EQ(Steps(), 3) << "one character";
    WriteByKeyboard();
    EXPECT_EQ(Slot(0), Bytes("1F 9F 00 00 00"));

#ifndef Q_OS_WIN // whose scan codes are others
    Press({Qt::ALT | Qt::Key_4, Qt::CTRL | Qt::SHIFT | Qt::Key_R});
    const auto send = [&](QEvent::Type type, int key, quint32 scanCode) {
        QKeyEvent event(type, key, Qt::NoModifier, scanCode + 8, 0, 0);
        QApplication::sendEvent(desk.window->windowHandle(), &event);
    };
    send(QEvent::KeyPress, Qt::Key_Control, 29);
    send(QEvent::KeyPress, Qt::Key_A, 30);
    send(QEvent::KeyRelease, Qt::Key_A, 30);
    send(QEvent::KeyRelease, Qt::Key_Control, 29);
    send(QEvent::KeyPress, Qt::Key_Pause, 119);
    EXPECT_EQ(Steps(), 2) << "with the chord and Pause 4";
    WriteByKeyboard();
    EXPECT_EQ(Slot(0, 7), Bytes("1F 9F 3A 1F 9F BA 00"));
    Press({Qt::ALT | Qt::Key_4, Qt::CTRL | Qt::Key_Z});
    WriteByKeyboard();
#endif

    Press({Qt::ALT | Qt::Key_4, Qt::Key_1, Qt::Key_0, Qt::CTRL | Qt::Key_Return});
    EXPECT_EQ(Steps(), 4) << "10 Enter";
    WriteByKeyboard();
    const std::string codes = Bytes("1F 9F 02 82 0B 8B 2B AB 00");
    EXPECT_EQ(Slot(0, 9), codes);

    Press({Qt::ALT | Qt::Key_4, Qt::CTRL | Qt::Key_C, Qt::Key_Down, Qt::SHIFT | Qt::Key_End,
           Qt::CTRL | Qt::Key_V});
    EXPECT_EQ(Steps(), 5) << "a key to twelve others";
    WriteByKeyboard();
    for (int key = 0; key < 24; ++key)
        EXPECT_EQ(Slot(key, 9) == codes, key == 0 || key >= 12) << key;

    Press({Qt::ALT | Qt::Key_4, Qt::SHIFT | Qt::Key_Tab});
    PressInMenu({Qt::Key_S, Qt::Key_9});
    Press({Qt::Key_Space});
    Activate(*desk.window);
    EXPECT_EQ(Steps(), 5) << "two layers";
    WriteByKeyboard();
    EXPECT_EQ(Slot(0, 1), Bytes("00"));
    EXPECT_EQ(Slot(9 * 24, 9), codes);

    Press({Qt::ALT | Qt::Key_5, Qt::SHIFT | Qt::Key_Right, Qt::SHIFT | Qt::Key_Down,
           Qt::CTRL | Qt::Key_J});
    EXPECT_EQ(Steps(), 4) << "four POS keys";
    Press({Qt::Key_B, Qt::Key_Return});
    WriteByKeyboard();
    EXPECT_EQ(Pos(1, 4), Bytes("01 32 B2 00"));
    for (const int key : {2, 16, 17})
        EXPECT_EQ(Pos(key, 2), Bytes("01 00")) << key;
}

} // namespace
} // namespace qx::test
