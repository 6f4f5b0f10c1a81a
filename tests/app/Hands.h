// Hands: a desk, and what hands do with the keys of a page, by the pointer and by the keyboard.
#pragma once

#include "Desk.h"

#include <QLineEdit>
#include <QMenu>
#include <QToolButton>

namespace qx::test {

using views::KeyGrid;

class Hands : public testing::Test {
protected:
    KeyGrid& Grid(const char* page, const char* name) {
        m_page = page;
        m_grid = name;
        desk.Page(page);
        auto* grid = desk.Find<KeyGrid>(name);
        desk.window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(desk.window.get()));
        grid->setFocus();
        return *grid;
    }
    KeyGrid& Layers() { return Grid("layeredFuncKeys", "funcKeys"); }
    static void Click(KeyGrid& grid, int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(&grid, Qt::LeftButton, modifiers, grid.KeyRect(key).center());
    }
    static void Keys(QWidget& widget, std::initializer_list<QKeyCombination> keys) {
        for (const QKeyCombination& key : keys)
            QTest::keyClick(&widget, key.key(), key.keyboardModifiers());
    }
    // Through the window system, which brings up menus.
    static void ClickAt(QWidget& widget, const QPoint& at, Qt::MouseButton button) {
        QWidget& window = *widget.window();
        QTest::mouseClick(window.windowHandle(), button, {}, widget.mapTo(&window, at));
    }
    // Clicks these entries, each in the menu that the click before has opened.
    static void Choose(std::initializer_list<const char*> path) {
        const QWidget* before = nullptr;
        for (const char* text : path) {
            QMenu* menu = nullptr;
            ASSERT_TRUE(QTest::qWaitFor([&] {
                menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                return menu != nullptr && menu != before;
            })) << text;
            const auto actions = menu->actions();
            const auto found = std::ranges::find_if(actions, [&](const QAction* action) {
                return QString(action->text()).remove(u'&') == QLatin1String(text);
            });
            ASSERT_NE(found, actions.end()) << text;
            ClickAt(*menu, menu->actionGeometry(*found).center(), Qt::LeftButton);
            before = menu;
        }
    }
    // Types into the menu that comes up next, and those that it opens.
    void TypeInMenu(std::initializer_list<Qt::Key> keys) {
        auto* watch = new QTimer(desk.window.get());
        QObject::connect(watch, &QTimer::timeout, watch, [watch, all = std::vector(keys)] {
            if (QApplication::activePopupWidget() == nullptr)
                return;
            watch->deleteLater();
            watch->stop();
            for (const Qt::Key key : all)
                QTest::keyClick(QApplication::activePopupWidget(), key);
        });
        watch->start(5);
    }
    void Type(const char* text, Qt::KeyboardModifiers modifiers = {}) {
        auto* typed = desk.Find<QLineEdit>("typedText");
        ASSERT_TRUE(typed->hasFocus());
        QTest::keyClicks(typed, QString::fromLatin1(text));
        QTest::keyClick(typed, Qt::Key_Return, modifiers);
    }
    // Writes, and comes back to the keys; how many settings were written.
    qsizetype Write() {
        const qsizetype changes = desk.Write().size();
        Grid(m_page, m_grid);
        return changes;
    }
    // The slot of a key of layer 0.
    std::string Slot(int key, Long size = 5) {
        return desk.Memory(MODULE_LAYERED_FUNCKEYS, Long{key} * 128, size);
    }
    // The first characters of the description of a key of layer 0, as stored in the keyboard.
    std::string Description(int key) {
        const std::string units = desk.workbench.Simulated()->Memory(70000 + Long{key} * 128, 12);
        std::string text;
        for (std::size_t i = 0; i < units.size() && units[i] != '\0'; i += 2)
            text += units[i];
        return text;
    }
    // Undoes this many steps, which are all there are.
    void ExpectSteps(int steps) {
        for (int step = 0; step < steps; ++step) {
            EXPECT_TRUE(desk.workbench.History().CanUndo()) << step;
            desk.UndoAction().trigger();
        }
        EXPECT_FALSE(desk.workbench.History().CanUndo());
    }

    Desk desk;

private:
    const char* m_page = "";
    const char* m_grid = "";
};

} // namespace qx::test
