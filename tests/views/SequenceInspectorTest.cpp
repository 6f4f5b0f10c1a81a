#include "views/SequenceInspector.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/SequenceText.h"
#include "views/ChipRow.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace qx::views {

namespace {

class SequenceInspectorTest : public testing::Test {
protected:
    SequenceInspectorTest() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl"));
        inspector.ShowLayout(&layout);
        QObject::connect(&inspector, &SequenceInspector::Changed,
                         [this](const std::vector<Byte>& codes) {
                             stored = SequenceToText(codes, layout);
                             ++changes;
                             Show(codes); // as its owner does
                         });
        Show({});
        inspector.resize(360, 600);
        inspector.show();
    }
    void Show(const std::vector<Byte>& codes, const QString& title = QStringLiteral("F2")) {
        inspector.Show(SequenceInspector::Edited{title.toStdString(), title, codes, 12, {}});
    }
    template <typename Widget>
    Widget* Part(const char* name) {
        auto* part = inspector.findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(part, nullptr) << name;
        return part;
    }
    // The chip of the item with this index.
    QWidget* Chip(int item) {
        QApplication::processEvents(); // arranges them
        std::vector<QWidget*> chips;
        for (auto* chip :
             Part<ChipRow>("keys")->findChildren<QFrame*>(QString(), Qt::FindDirectChildrenOnly))
            if (!chip->isHidden()) // it is to be deleted
                chips.push_back(chip);
        return chips.at(static_cast<std::size_t>(item));
    }
    void Click(const char* name) { QTest::mouseClick(Part<QAbstractButton>(name), Qt::LeftButton); }
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(Part<ChipRow>("keys"), static_cast<Qt::Key>(key), modifiers);
    }

    QXKeyboardLayoutData layout;
    SequenceInspector inspector;
    std::string stored;
    int changes = 0;
};

} // namespace

TEST_F(SequenceInspectorTest, KeysAndChordsAreClicked) {
    Click("key_48");
    EXPECT_EQ(stored, "C ^C");
    Click("hold_58");
    Click("key_48");
    Click("key_31");
    EXPECT_EQ(stored, "C ^C Ctrl C ^C ^Ctrl A ^A") << "Ctrl is held for one key";
    EXPECT_EQ(Part<QLabel>("codesLeft")->text().toStdString(), "Codes left: 4");
    Click("hold_44");
    Click("hold_58");
    Click("key_31");
    EXPECT_EQ(changes, 3) << "six codes do not fit, and nothing has changed";
    Show({}, QStringLiteral("F3"));
    Click("key_48");
    EXPECT_EQ(stored, "C ^C") << "another key starts anew, without Shift";
}

TEST_F(SequenceInspectorTest, TextIsTyped) {
    QTest::keyClicks(Part<QLineEdit>("typedText"), "10");
    Click("addTextAndEnter");
    EXPECT_EQ(stored, "1 ^1 0 ^0 Enter ^Enter");
    EXPECT_TRUE(Part<QLineEdit>("typedText")->text().isEmpty());
    Press(Qt::Key_Home);
    Part<QLineEdit>("typedText")->setText(QStringLiteral("A"));
    QTest::keyClick(Part<QLineEdit>("typedText"), Qt::Key_Return);
    EXPECT_EQ(stored, "Shift A ^A ^Shift 1 ^1 0 ^0 Enter ^Enter") << "at the caret";
    Part<QLineEdit>("typedText")->setText(QStringLiteral("\u20ac"));
    Click("addText");
    EXPECT_EQ(Part<QLineEdit>("typedText")->text(), QStringLiteral("\u20ac")) << "nothing is lost";
    EXPECT_EQ(changes, 2);
}

TEST_F(SequenceInspectorTest, ItemsAreMovedAndRemovedByTheKeyboard) {
    Show(ParseSequenceText("Ctrl C ^C ^Ctrl 1 ^1 0 ^0 Enter ^Enter", layout));
    Press(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(stored, "Ctrl C ^C ^Ctrl Enter ^Enter 1 ^1 0 ^0");
    Press(Qt::Key_Backspace);
    EXPECT_EQ(stored, "Ctrl C ^C ^Ctrl 1 ^1 0 ^0") << "the caret went with it";
    Press(Qt::Key_Delete);
    EXPECT_EQ(stored, "Ctrl C ^C ^Ctrl 0 ^0") << "of a text one character";
    Press(Qt::Key_Delete);
    EXPECT_EQ(stored, "Ctrl C ^C ^Ctrl");
    Click("removeLast");
    EXPECT_EQ(stored, "");
    EXPECT_FALSE(Part<QToolButton>("removeLast")->isEnabled());
}

TEST_F(SequenceInspectorTest, ALetterInsideATextIsCorrected) {
    Show(ParseSequenceText("Shift T ^T O ^O L ^L ^Shift Enter ^Enter", layout));
    Press(Qt::Key_Left);
    Press(Qt::Key_Left);
    Press(Qt::Key_Backspace);
    EXPECT_EQ(stored, "Shift T ^T L ^L ^Shift Enter ^Enter");
    QTest::keyClicks(Part<QLineEdit>("typedText"), "I");
    Click("addText");
    EXPECT_EQ(stored, "Shift T ^T I ^I L ^L ^Shift Enter ^Enter");
    QTest::mouseClick(Chip(0), Qt::LeftButton, {}, {10, Chip(0)->height() / 2});
    Press(Qt::Key_Right);
    Press(Qt::Key_Delete);
    EXPECT_EQ(stored, "Shift T ^T L ^L ^Shift Enter ^Enter");
    const auto* label = Chip(0)->findChild<QLabel*>();
    QTest::mouseClick(Chip(0), Qt::LeftButton, {},
                      {label->x() + label->fontMetrics().horizontalAdvance(QStringLiteral("T")),
                       Chip(0)->height() / 2});
    Press(Qt::Key_Backspace);
    EXPECT_EQ(stored, "Shift L ^L ^Shift Enter ^Enter") << "the click was between the letters";
}

TEST_F(SequenceInspectorTest, ItemsAreDraggedToTheirPlace) {
    Show(ParseSequenceText("Ctrl C ^C ^Ctrl 1 ^1 0 ^0 Enter ^Enter", layout));
    const auto drag = [this](int item, const QPoint& to) { // of the row
        const QPoint from(12, Chip(item)->height() / 2);
        const QPoint end = Chip(item)->mapFrom(Part<ChipRow>("keys"), to);
        QPointer<QWidget> chip = Chip(item);
        QTest::mousePress(chip, Qt::LeftButton, {}, from);
        for (const QPoint& at : {(from + end) / 2, end}) {
            QMouseEvent move(QEvent::MouseMove, at, chip->mapToGlobal(at), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(chip, &move);
        }
        QTest::mouseRelease(chip, Qt::LeftButton, {}, end);
    };
    drag(2, Chip(0)->geometry().center() - QPoint(8, 0));
    EXPECT_EQ(stored, "Enter ^Enter Ctrl C ^C ^Ctrl 1 ^1 0 ^0") << "before the first one";
    drag(0, Chip(1)->geometry().center() + QPoint(8, 0));
    EXPECT_EQ(stored, "Ctrl C ^C ^Ctrl Enter ^Enter 1 ^1 0 ^0") << "behind the second one";
    drag(0, Part<ChipRow>("keys")->rect().bottomRight() + QPoint(20, 20));
    EXPECT_EQ(changes, 2) << "out of the row";
    drag(1, Chip(1)->geometry().center() - QPoint(30, 0));
    EXPECT_EQ(stored, "Ctrl C ^C ^Ctrl Enter ^Enter 1 ^1 0 ^0") << "where it is already";
}

TEST_F(SequenceInspectorTest, KeysOfThePcAreRecordedByTheirPlaces) {
    Click("record");
    const auto send = [this](QEvent::Type type, int key, quint32 scanCode, bool repeats = false) {
        QKeyEvent event(type, key, Qt::NoModifier, scanCode, 0, 0, QString(), repeats);
        QApplication::sendEvent(Part<QToolButton>("record"), &event);
    };
#ifdef Q_OS_WIN
    constexpr quint32 kOffset = 0, kDelete = 0x153;
#else
    constexpr quint32 kOffset = 8, kDelete = 111 + 8;
#endif
    send(QEvent::KeyPress, Qt::Key_Control, 29 + kOffset);
    send(QEvent::KeyPress, Qt::Key_Control, 29 + kOffset, true);
    send(QEvent::KeyPress, Qt::Key_Delete, kDelete);
    send(QEvent::KeyRelease, Qt::Key_Delete, kDelete);
    send(QEvent::KeyRelease, Qt::Key_Control, 29 + kOffset);
    send(QEvent::KeyPress, Qt::Key_VolumeUp, 115 + 100 + kOffset);
    EXPECT_EQ(stored, "Ctrl Del ^Del ^Ctrl");
    Click("record");
    send(QEvent::KeyPress, Qt::Key_Delete, kDelete);
    EXPECT_EQ(changes, 4);
}

TEST_F(SequenceInspectorTest, EachKeyIsOnOneTabOfThePalette) {
    const auto* tabs = Part<QTabWidget>("keyGroups");
    std::map<int, QString> tabOf;
    int keys = 0;
    for (int tab = 0; tab < tabs->count(); ++tab)
        for (const auto* key : tabs->widget(tab)->findChildren<QToolButton*>()) {
            tabOf[key->objectName().mid(4).toInt()] = tabs->tabText(tab);
            ++keys;
        }
    for (Long code = 1; code < 128; ++code)
        EXPECT_EQ(tabOf.contains(code), !layout.KeyCaption(code).empty()) << code;
    EXPECT_EQ(static_cast<std::size_t>(keys), tabOf.size());
    const std::map<int, const char*> expected = {
        {31, "A–Z"},      {61, "A–Z"},     {43, "Navigation"}, {84, "Navigation"},
        {58, "Ctrl/Alt"}, {123, "F1–F12"}, {110, "F1–F12"},    {108, "Keypad"}};
    for (const auto& [key, title] : expected)
        EXPECT_EQ(tabOf[key].toStdString(), title) << key;
}

TEST_F(SequenceInspectorTest, ThePaletteArrangesKeysAndNamesModifiersAsTheKeyboardDoes) {
    Show({});
    EXPECT_EQ(Part<QToolButton>("hold_62")->text().toStdString(), "RAlt");
    struct Row {
        int tab;
        std::vector<int> keys;
        int below; // this key
    };
    const Row rows[] = {{2, {79, 84, 89}, 83}, // the cursor keys below Up
                        {3, {92, 97, 102}, 96},
                        {3, {93, 98, 103}, 97}};
    for (const int width : {360, 800}) { // with and without room for all of them in one line
        inspector.resize(width, 600);
        for (const Row& row : rows) {
            Part<QTabWidget>("keyGroups")->setCurrentIndex(row.tab);
            QApplication::processEvents();
            const auto place = [this](int key) {
                const auto* button = Part<QToolButton>(("key_" + std::to_string(key)).c_str());
                return QRect(button->mapTo(&inspector, QPoint()), button->size());
            };
            EXPECT_EQ(place(row.keys[1]).left(), place(row.below).left()) << row.below;
            EXPECT_GT(place(row.keys[1]).top(), place(row.below).bottom()) << row.below;
            for (std::size_t i = 1; i < row.keys.size(); ++i) {
                EXPECT_EQ(place(row.keys[i]).top(), place(row.keys[i - 1]).top()) << row.keys[i];
                EXPECT_GT(place(row.keys[i]).left(), place(row.keys[i - 1]).right()) << row.keys[i];
            }
        }
    }
}

TEST_F(SequenceInspectorTest, AKeyThatCannotBeProgrammedShowsWhy) {
    inspector.Show(SequenceInspector::Edited{"A", "A", {}, 12, "This key cannot be programmed."});
    EXPECT_FALSE(Part<ChipRow>("keys")->isVisible());
    inspector.Show({});
    EXPECT_FALSE(Part<ChipRow>("keys")->isVisible());
    Show({31, 159});
    EXPECT_TRUE(Part<ChipRow>("keys")->isVisible());
}

} // namespace qx::views
