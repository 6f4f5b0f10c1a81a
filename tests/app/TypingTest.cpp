// Fields that are being typed into: what becomes of the text, and whose undo it is.
#include "Hands.h"

#include <QSpinBox>

namespace qx::test {
namespace {

// What was typed belongs to the key that it was typed for, without Enter too.
TEST_F(Hands, TypedTextIsNotLost) {
    KeyGrid& grid = Layers();
    const auto type = [&](int key, const char* text) {
        Click(grid, key);
        auto* typed = desk.Find<QLineEdit>("typedText");
        typed->setFocus();
        QTest::keyClicks(typed, text);
        return typed;
    };
    type(0, "a");
    grid.setFocus(Qt::MouseFocusReason);   // as a click does
    Keys(*type(1, "b"), {Qt::Key_Escape}); // drops it, and the field keeps the focus
    QTest::keyClicks(desk.Find<QLineEdit>("typedText"), "c");
    EXPECT_EQ(Write(), 2);
    EXPECT_EQ(Slot(0, 3), Bytes("1F 9F 00"));
    EXPECT_EQ(Slot(1, 3), Bytes("30 B0 00"));
}

// The window's undo; in a field that has its own first.
TEST_F(Hands, UndoIsTheWindowsUnlessANumberIsBeingTyped) {
    desk.Page("barcode");
    auto* size = desk.Find<QSpinBox>("Code39.minSize");
    size->setFocus();
    const int before = size->value();
    Keys(*size, {Qt::Key_Up, Qt::Key_Up});
    EXPECT_EQ(size->value(), before + 2);
    Keys(*size, {Qt::CTRL | Qt::Key_Z});
    EXPECT_EQ(desk.Find<QSpinBox>("Code39.minSize")->value(), before);
    EXPECT_FALSE(desk.workbench.History().CanUndo());
}

// What a field has made is undone at once, though the field was typed into.
TEST_F(Hands, UndoTakesASeriesAndTheNameOfALayerBack) {
    KeyGrid& grid = Layers();
    grid.Select({0, 1, 2});
    Keys(grid, {Qt::CTRL | Qt::Key_L});
    auto* text = desk.Find<QLineEdit>("seriesText");
    QTest::keyClicks(text, "T");
    Keys(*text, {Qt::Key_Return});
    EXPECT_EQ(desk.Notice().toStdString(), "3 keys filled.");
    Keys(*desk.window->focusWidget(), {Qt::CTRL | Qt::Key_Z});
    EXPECT_FALSE(desk.workbench.History().CanUndo());

    auto* name = desk.Find<QLineEdit>("layerName");
    name->setFocus();
    QTest::keyClicks(name, "Bar");
    Keys(*name, {Qt::Key_Return});
    for (int press = 0; press < 2; ++press)
        Keys(*name, {Qt::CTRL | Qt::Key_Z});
    EXPECT_EQ(name->text(), QString());
    EXPECT_FALSE(desk.workbench.History().CanUndo());
}

// Its button is disabled then, and must not hand the focus on to another field.
TEST_F(Hands, JoinLeavesTheFocusOnTheKeys) {
    KeyGrid& grid = Grid("pos", "posDisplay");
    Click(grid, 1);
    Click(grid, 2, Qt::ControlModifier);
    desk.Find<QToolButton>("joinKeys")->setFocus();
    desk.Click("joinKeys");
    EXPECT_TRUE(grid.hasFocus());
}

} // namespace
} // namespace qx::test
