// The search for actions, pages, keys and settings.
#include "Desk.h"

#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"

#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QSlider>
#include <QSpinBox>

namespace qx::test {
namespace {

TEST(QuickFind, LeadsToSettingsKeysAndProgrammedTexts) {
    Desk desk;
    const auto find = [&](const char* words) {
        auto* field = desk.Find<QLineEdit>("quickFind");
        field->setFocus();
        QTest::keyClicks(field, QString::fromLatin1(words));
        QTest::keyClick(field, Qt::Key_Return);
    };
    find("code 39 shortest");
    EXPECT_EQ(QApplication::focusWidget(), desk.Find<QSpinBox>("Code39.minSize"));
    find("free keys key 80");
    EXPECT_EQ(desk.ControlOf<QXFreeProgKeys>("freeProgKeys").CurrentKey(), 80);
    find("pos keys key 10");
    EXPECT_TRUE(desk.Find<QWidget>("posDisplay")->isVisible());
    find("f24");
    EXPECT_EQ(desk.ControlOf<QXLayeredFuncKeys>("layeredFuncKeys").CurrentKey(), 23);
    find("font size");
    EXPECT_TRUE(desk.Find<QWidget>("KeyFontSize")->isVisible());

    // All words must match; entries that begin with them come first.
    auto* field = desk.Find<QLineEdit>("quickFind");
    const auto* found = desk.window->findChild<QListWidget*>(QStringLiteral("quickFindResults"));
    field->setFocus();
    field->clear();
    QTest::keyClicks(field, QStringLiteral("code 39 nowhere"));
    ASSERT_EQ(found->count(), 1);
    EXPECT_EQ(found->item(0)->text(), QStringLiteral("Nothing found"));
    field->clear();
    QTest::keyClicks(field, QStringLiteral("key"));
    ASSERT_GT(found->count(), 2);
    EXPECT_TRUE(found->item(1)->text().startsWith(QStringLiteral("key"), Qt::CaseInsensitive))
        << found->item(1)->text().toStdString();
}

// Actions are found with their shortcuts, by words, initials or a few letters, and run by Enter.
TEST(QuickFind, RunsActionsAndListsNothingTwice) {
    Desk desk;
    desk.Page("commonKeyboard");
    auto* slider = desk.Find<QSlider>("slidOutputDelay");
    slider->setFocus();
    slider->setValue(9);
    auto* field = desk.Find<QLineEdit>("quickFind");
    const auto* found = desk.window->findChild<QListWidget*>(QStringLiteral("quickFindResults"));
    const auto rows = [&](const char* words) {
        QTest::keyClick(desk.window.get(), Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(field, QString::fromLatin1(words));
        QStringList texts;
        for (int row = 0; row < found->count(); ++row)
            texts.append(found->item(row)->text());
        return texts;
    };
    for (const char* words : {"write to", "wtk", "wrkeyb"}) {
        const QStringList texts = rows(words);
        EXPECT_EQ(texts.value(0), QStringLiteral("Actions")) << words;
        EXPECT_TRUE(texts.value(1).startsWith(QStringLiteral("Write to keyboard")))
            << words << texts.join('\n').toStdString();
        EXPECT_TRUE(texts.value(1).endsWith(QStringLiteral("(Ctrl+Shift+W)")));
        QTest::keyClick(field, Qt::Key_Escape);
        EXPECT_TRUE(slider->hasFocus()) << "the focus goes back";
    }
    for (const char* words : {"magnetic", "key", "print", "a"}) {
        QStringList texts = rows(words);
        EXPECT_EQ(texts.removeDuplicates(), 0) << words;
        QTest::keyClick(field, Qt::Key_Escape);
    }
    EXPECT_TRUE(rows("undo").value(1).contains(QStringLiteral("Output delay")));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(slider->value(), 6);
}

// The field finds what the page offers that is shown now, whatever was shown when a menu was open.
TEST(QuickFind, ActsOnThePageAndTheLayerThatAreShown) {
    Desk desk;
    desk.Page("freeProgKeys");
    desk.ClickKey("layoutDisplay", 75);
    desk.Click("key_31");
    emit desk.window->menuBar()->actions()[1]->menu()->aboutToShow(); // Edit
    desk.Page("layeredFuncKeys");
    emit desk.Find<QPushButton>("layerMenu")->menu()->aboutToShow();
    desk.ClickKey("funcKeys", 0);
    desk.Click("key_31");
    desk.ShowLayer(3);
    desk.ClickKey("funcKeys", 1);
    desk.Click("key_50");
    const auto run = [&](const char* words) {
        auto* field = desk.Find<QLineEdit>("quickFind");
        field->setFocus();
        QTest::keyClicks(field, QString::fromLatin1(words));
        QTest::keyClick(field, Qt::Key_Return);
    };
    run("copy to layer 5");
    run("swap with layer 7");
    desk.ShowLayer(0);
    desk.ClickKey("funcKeys", 0);
    run("clear");
    desk.Write();
    const auto slot = [&](int layer, int key) {
        return desk.Memory(MODULE_LAYERED_FUNCKEYS, Long{layer * 24 + key} * 128, 3);
    };
    EXPECT_EQ(desk.Memory(MODULE_FREEPROGRAMMABLE_KEYS, 0, 3), Bytes("1F 9F 00"));
    EXPECT_EQ(slot(0, 0).front(), '\0');
    EXPECT_EQ(slot(3, 1).front(), '\0');
    for (const int layer : {5, 7})
        EXPECT_EQ(slot(layer, 1), Bytes("32 B2 00")) << layer;

    // Neither does the list of before a click apply after it.
    desk.Page("layeredFuncKeys");
    auto* field = desk.Find<QLineEdit>("quickFind");
    field->setFocus();
    QTest::keyClicks(field, QStringLiteral("copy to layer"));
    desk.ShowLayer(7);
    QTest::keyClicks(field, QStringLiteral(" 6"));
    QTest::keyClick(field, Qt::Key_Return);
    desk.Write();
    EXPECT_EQ(slot(6, 1), Bytes("32 B2 00"));
}

TEST(QuickFind, KnowsKeysByEveryNameThatTheyHave) {
    Desk desk;
    desk.Page("pos");
    for (const int key : {12, 20, 40}) { // blocks 1 to 3
        desk.ClickKey("posDisplay", key);
        desk.Click("key_31");
    }
    desk.ControlOf<QXLayeredFuncKeys>("layeredFuncKeys").Layer(0).GetKey(19).SetKeyString(" 31");
    desk.Page("overview");
    auto* field = desk.Find<QLineEdit>("quickFind");
    const auto* found = desk.window->findChild<QListWidget*>(QStringLiteral("quickFindResults"));
    const auto first = [&](const char* words) {
        field->setFocus();
        field->clear();
        QTest::keyClicks(field, QString::fromLatin1(words));
        return found->count() < 2 ? std::string() : found->item(1)->text().toStdString();
    };
    EXPECT_EQ(first("insert"), "Free keys › Key 75 (Ins)");
    EXPECT_EQ(found->count(), 3) << "that of the POS module too, and nothing else";
    EXPECT_EQ(first("ins"), "Free keys › Key 75 (Ins)");
    EXPECT_TRUE(QString::fromStdString(first("block 3")).startsWith("POS keys › Key 40 ("))
        << found->item(1)->text().toStdString();
    first("key 1");
    EXPECT_TRUE(found->item(0)->text().startsWith("Keys (6 of ")) << "more than are shown";
    first("key");
    QStringList titles;
    for (int row = 0; row < found->count(); ++row)
        if (found->item(row)->data(Qt::UserRole).isNull())
            titles += found->item(row)->text().section(u' ', 0, 0);
    titles.sort();
    EXPECT_EQ(titles, (QStringList{"Actions", "Keys", "Pages", "Settings"}))
        << titles.join(u' ').toStdString();
    EXPECT_EQ(first("f2"), "Free keys › Key 113 (F2)");
    EXPECT_TRUE(found->item(6)->text().endsWith(QStringLiteral(", F2"))) << "before F20";
    first("pos");
    const auto keys = found->findItems(QStringLiteral("Keys ("), Qt::MatchStartsWith);
    ASSERT_EQ(keys.size(), 1);
    EXPECT_TRUE(found->item(found->row(keys[0]) + 1)->text().startsWith("POS keys › Key 12 ("))
        << "what sends something comes first";
    EXPECT_EQ(first("esc"), "Free keys › Key 110 (Esc)");
    EXPECT_TRUE(found->item(2)->text().startsWith("POS keys › Key 1 (Esc)"))
        << "neither its number nor its colour";
    for (const char* words : {"layer 0 f2", "layer 0, f2"})
        EXPECT_EQ(first(words), "Layered function keys › Layer 0, F2") << "F20 is programmed";
    EXPECT_EQ(first("page up"), "Free keys › Key 85 (PgUp)");
    QTest::keyClick(field, Qt::Key_Return);
    QTest::keyClicks(desk.Find<views::KeyGrid>("layoutDisplay"), "b");
    desk.Click("addText");
    desk.Write();
    EXPECT_NE(desk.Memory(MODULE_FREEPROGRAMMABLE_KEYS, 0, 1280).find(Bytes("32 B2 00")),
              std::string::npos);
    EXPECT_EQ(desk.ControlOf<QXFreeProgKeys>("freeProgKeys").CurrentKey(), 85);
}

} // namespace
} // namespace qx::test
