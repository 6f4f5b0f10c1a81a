// The search for actions, pages, keys and settings.
#include "Desk.h"

#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"

#include <QLineEdit>
#include <QListWidget>
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
    EXPECT_TRUE(rows("undo").value(1).contains(QStringLiteral("output delay")));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(slider->value(), 6);
}

} // namespace
} // namespace qx::test
