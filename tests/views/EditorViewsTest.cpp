// The sequence editor and the POS programmer as dialogs, clicked like a user, with a keyboard
// behind them.
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QXSequencer.h"
#include "qxcontrols/pos/POSModuleBlock.h"
#include "qxcontrols/pos/QXPOSProgrammer.h"
#include "qxcontrols/pos/QXPos.h"
#include "support/TestKeyboard.h"
#include "views/KeyGrid.h"
#include "views/QtPlatform.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <exception>
#include <functional>
#include <memory>

namespace qx::test {
namespace {

using views::KeyGrid;

// A user's actions in the frontmost dialog.
class User {
public:
    User() : m_dialog(QApplication::activeModalWidget()) {
        EXPECT_NE(m_dialog, nullptr);
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_dialog));
    }

    template <typename Widget = QWidget>
    [[nodiscard]] Widget* Find(const char* name) const {
        auto* found = m_dialog->findChild<Widget*>(QString::fromLatin1(name));
        if (found == nullptr)
            throw std::runtime_error(std::string("no widget ") + name);
        return found;
    }
    void Click(const char* name) const {
        auto* widget = Find(name);
        EXPECT_TRUE(widget->isVisible() && widget->isEnabled()) << name;
        // A check box must be clicked on its box, at its left end.
        QTest::mouseClick(widget, Qt::LeftButton, {}, {8, widget->height() / 2});
    }
    void ClickKeys(const char* grid, std::initializer_list<int> keys,
                   Qt::KeyboardModifiers modifiers = {}) const {
        for (const int key : keys) {
            auto* widget = Find<KeyGrid>(grid);
            QTest::mouseClick(widget, Qt::LeftButton, modifiers, widget->KeyRect(key).center());
        }
    }
    void Type(const char* name, const QString& text) const {
        Find<QLineEdit>(name)->setFocus();
        Find<QLineEdit>(name)->selectAll();
        QTest::keyClicks(Find(name), text);
    }
    // Closes the dialog by Esc; answers a question with this button. True if there was a question.
    [[nodiscard]] bool Leave(const QString& answer) const {
        const auto isAsked = std::make_shared<bool>(false);
        QTimer::singleShot(0, m_dialog, [answer, isAsked] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            *isAsked = box != nullptr;
            if (box == nullptr)
                return;
            const QPushButton* preset = box->defaultButton();
            EXPECT_TRUE(preset != nullptr && preset->text() == QStringLiteral("&Keep editing"));
            for (QAbstractButton* button : box->buttons())
                if (button->text() == answer)
                    return button->click();
            QTest::keyClick(box, Qt::Key_Escape);
        });
        QTest::keyClick(m_dialog, Qt::Key_Escape);
        return *isAsked;
    }
    [[nodiscard]] QWidget* Dialog() const { return m_dialog; }

private:
    QWidget* m_dialog;
};

class EditorViewsTest : public testing::Test {
protected:
    EditorViewsTest() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl"));
        sequencer.SetKeyboard(&keyboard.access);
        sequencer.SetLayoutSource(&layout);
        sequencer.SetSequenceSizeMessage("full");
        sequencer.SetDoShowDetails(true);
        programmer.SetLayoutSource(&layout);
        pos.SetKeyboard(&keyboard.access);
    }

    // Runs the user's actions once a dialog is open; closes any dialog that is still open then.
    void WhenOpen(std::function<void(const User&)> does) {
        QTimer::singleShot(0, [does = std::move(does)] {
            const User user;
            try {
                does(user);
            } catch (const std::exception& error) {
                ADD_FAILURE() << error.what();
            }
            if (user.Dialog() == QApplication::activeModalWidget())
                (void)user.Leave(QStringLiteral("&Discard"));
        });
    }

    // Edits "  5" with at most ten codes.
    std::string EditSequence(std::function<void(const User&)> does) {
        WhenOpen(std::move(does));
        std::string edited = "unchanged";
        sequencer.ShowSequenceEditor(30, "  5", edited, 10);
        EXPECT_FALSE(keyboard.driver.positionMode);
        return edited;
    }

    TestKeyboard keyboard{{{MODULE_POS, 0x1000}}};
    QXKeyboardLayoutData layout;
    views::QtPlatform platform;
    QXSequencer sequencer{platform.Services()};
    QXPOSProgrammer programmer{platform.Services()};
    QXPos pos{platform.Services()};
};

TEST_F(EditorViewsTest, SequencesAreClickedPressedAndTyped) {
    const auto record = [&](const User& user) {
        user.ClickKeys("layoutDisplay", {31});
        EXPECT_TRUE(keyboard.driver.positionMode);
        keyboard.driver.positionKeys = {32, -1, 160};
        EXPECT_TRUE(QTest::qWaitFor([&] { return keyboard.driver.positionKeys.empty(); }));
        user.Type("txtTyped", QStringLiteral("{5} Ctrl+X Z"));
        EXPECT_FALSE(keyboard.driver.positionMode);
        QTest::keyClick(user.Find("txtTyped"), Qt::Key_Return);
        EXPECT_TRUE(user.Dialog()->isVisible()); // Enter only accepts the text
        user.ClickKeys("layoutDisplay", {31});
        EXPECT_TRUE(keyboard.driver.positionMode);
        user.Click("cmdClean_0");
        user.Click("cmdOK");
    };
    EXPECT_EQ(EditSequence(record), "  5 58 47175186 46 31");
}

TEST_F(EditorViewsTest, InTheBackgroundTheKeyboardTypes) {
    EditSequence([&](const User& user) {
        const auto goes = [](Qt::ApplicationState state) {
            emit qGuiApp->applicationStateChanged(state);
        };
        goes(Qt::ApplicationInactive);
        EXPECT_FALSE(keyboard.driver.positionMode);
        goes(Qt::ApplicationActive);
        EXPECT_TRUE(keyboard.driver.positionMode);
        user.Find("txtTyped")->setFocus();
        goes(Qt::ApplicationInactive);
        goes(Qt::ApplicationActive);
        EXPECT_FALSE(keyboard.driver.positionMode);

        QDialog other(user.Dialog()); // while another window is in front, nothing is recorded
        other.open();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
        keyboard.driver.positionKeys = {31};
        QTest::qWait(250);
        EXPECT_EQ(keyboard.driver.positionKeys.size(), 1U);
    });
}

TEST_F(EditorViewsTest, WrongTextIsExplainedInPlace) {
    EXPECT_EQ(EditSequence([](const User& user) {
                  user.Type("txtTyped", QStringLiteral("Ctrl+Nonsense"));
                  user.Click("cmdOK");
                  EXPECT_TRUE(user.Dialog()->isVisible());
                  EXPECT_TRUE(user.Find<QLabel>("lblTypedFault")->text().contains("Nonsense"));
                  EXPECT_FALSE(user.Find("lblSizeMsg")->isVisible());
                  user.Type("txtTyped", QStringLiteral("A B C D E F A B C D E F"));
                  EXPECT_FALSE(user.Find("lblTypedFault")->isVisible());
                  user.Click("cmdApply");
                  EXPECT_EQ(user.Find<QLabel>("lblTypedFault")->text().toStdString(),
                            "The text has 12 codes, only 10 fit.");
                  EXPECT_TRUE(user.Find("lblTypedFault")->isVisible());
                  EXPECT_FALSE(user.Find("lblSizeMsg")->isVisible());

                  // The message "full" disappears when there is room again.
                  user.Type("txtTyped", QStringLiteral("A B C D E F A B C D"));
                  user.Click("cmdApply");
                  EXPECT_FALSE(user.Find("lblSizeMsg")->isVisible());
                  user.ClickKeys("layoutDisplay", {31});
                  EXPECT_TRUE(user.Find("lblSizeMsg")->isVisible());
                  user.Click("cmdClean_0");
                  EXPECT_FALSE(user.Find("lblSizeMsg")->isVisible());
              }),
              "unchanged");
}

TEST_F(EditorViewsTest, TheTextWithReleasesIsShownOnceAndOnWish) {
    EditSequence([](const User& user) {
        const QWidget& text = *user.Find("txtTyped");
        EXPECT_TRUE(text.isVisible() && !user.Find("txtSequence")->isVisible());
        user.Click("chkShowDetails");
        EXPECT_FALSE(text.isVisible() || user.Find("txtSequence")->isVisible());
        user.Click("chkShowDetails");
        user.Type("txtTyped", QStringLiteral("Ctr"));
        user.Click("chkShowDetails");
        EXPECT_TRUE(text.isVisible()) << "it would be taken unseen";
    });
}

TEST_F(EditorViewsTest, ClosingTheWindowLosesNothingWithoutAQuestion) {
    const auto leave = [](const User& user, const QString& answer, bool asks, bool leaves) {
        EXPECT_EQ(user.Leave(answer), asks);
        EXPECT_NE(user.Dialog()->isVisible(), leaves);
    };
    EXPECT_EQ(EditSequence([&](const User& user) { leave(user, {}, false, true); }), "unchanged");
    EXPECT_EQ(EditSequence([&](const User& user) {
                  user.ClickKeys("layoutDisplay", {31});
                  leave(user, {}, true, false); // Esc answers no
                  leave(user, QStringLiteral("&Keep editing"), true, false);
                  user.Click("cmdClean_1");
                  user.Type("txtTyped", QStringLiteral("{5}"));
                  user.Click("cmdApply");
                  leave(user, {}, false, true); // unchanged
              }),
              "unchanged");
    EXPECT_EQ(EditSequence([&](const User& user) {
                  user.Type("txtTyped", QStringLiteral("Ctr"));
                  leave(user, QStringLiteral("&Discard"), true, true);
              }),
              "unchanged");
    EXPECT_EQ(EditSequence([&](const User& user) {
                  user.ClickKeys("layoutDisplay", {31});
                  user.Click("cmdCancel"); // Cancel needs no question
                  EXPECT_FALSE(user.Dialog()->isVisible());
              }),
              "unchanged");
}

TEST_F(EditorViewsTest, ClicksOnTheTwinArriveFromTheKeyboard) {
    platform.modalForms.pressTwinKey = [&](Long lCode) {
        keyboard.driver.positionKeys.push_back(lCode);
    };
    EXPECT_EQ(EditSequence([&](const User& user) {
                  user.Click("chkTwin");
                  user.ClickKeys("layoutDisplay", {31});
                  EXPECT_EQ(keyboard.driver.positionKeys.size(), 2U);
                  EXPECT_TRUE(
                      QTest::qWaitFor([&] { return keyboard.driver.positionKeys.empty(); }));
                  QTest::keyClick(user.Dialog(), Qt::Key_Return, Qt::ControlModifier);
              }),
              "  5 31159");
    platform.modalForms.pressTwinKey = nullptr;
    EditSequence([](const User& user) { EXPECT_FALSE(user.Find("chkTwin")->isVisible()); });
}

TEST_F(EditorViewsTest, ChordsAndTextAreClickedAndItemsMoved) {
    const auto edit = [&](const User& user) {
        user.Click("cmdClean_1");
        user.Click("hold_58");
        user.ClickKeys("layoutDisplay", {48, 31}); // Ctrl+C, A
        EXPECT_FALSE(user.Find<QAbstractButton>("hold_58")->isChecked());
        QTest::keyClick(user.Find("keys"), Qt::Key_Left, Qt::ControlModifier); // A before Ctrl+C
        user.Type("typedText", QStringLiteral("1"));
        EXPECT_FALSE(keyboard.driver.positionMode) << "the keyboard types";
        QTest::keyClick(user.Find("typedText"), Qt::Key_Return); // behind the A
        user.ClickKeys("layoutDisplay", {32});                   // behind the 1
        EXPECT_TRUE(keyboard.driver.positionMode);
        user.Click("hold_44");
        user.ClickKeys("layoutDisplay", {31});
        EXPECT_TRUE(user.Find("lblSizeMsg")->isVisible()) << "four codes do not fit";
        user.Find<QLineEdit>("typedText")->setText(QStringLiteral("\u20ac"));
        user.Click("cmdOK");
        EXPECT_TRUE(user.Dialog()->isVisible()) << "no key types it";
        user.Find<QLineEdit>("typedText")->clear();
        user.Click("cmdOK");
    };
    EXPECT_EQ(EditSequence(edit), " 31159  2130 32160 58 48176186");
    EXPECT_EQ(EditSequence([&](const User& user) {
                  user.Type("typedText", QStringLiteral("1"));
                  EXPECT_TRUE(user.Leave({})) << "the text would be lost";
                  QTest::keyClick(user.Find("keys"), Qt::Key_Home);
                  QTest::keyClick(user.Find("keys"), Qt::Key_Delete);
                  user.Click("cmdOK"); // with the text
              }),
              "  2130");
    EXPECT_EQ(EditSequence([&](const User& user) {
                  user.Type("typedText", QStringLiteral("1"));
                  QTest::keyClick(user.Find("typedText"), Qt::Key_Return, Qt::ControlModifier);
                  EXPECT_TRUE(user.Dialog()->isVisible()) << "text and Enter";
                  user.Click("cmdOK");
              }),
              "  5  2130 43171");
    EXPECT_EQ(EditSequence([&](const User& user) {
                  user.Type("typedText", QStringLiteral("TI"));
                  QTest::keyClick(user.Find("typedText"), Qt::Key_Return);
                  QTest::keyClick(user.Find("keys"), Qt::Key_Left); // not to where Shift is held
                  user.ClickKeys("layoutDisplay", {32});
                  user.Click("cmdOK");
              }),
              "  5 32160 44 21149 24152172");
}

TEST_F(EditorViewsTest, PosBlocksAreClickedTogetherAndReachTheKeyboard) {
    const Subscription asks = pos.POSEditorRequested.Subscribe(
        [&](bool& fCancelEdit) { fCancelEdit = !programmer.ShowPosProgrammer(pos.PosData()); });
    const Subscription edits = programmer.EditSequence.Subscribe(
        [&](Integer nPosCode, const std::string& sOutSeq, bool& fCancelEdit, std::string& sInSeq) {
            WhenOpen([](const User& user) {
                user.ClickKeys("layoutDisplay", {30});
                user.Click("cmdOK");
            });
            fCancelEdit =
                !sequencer.ShowSequenceEditor(nPosCode, sOutSeq, sInSeq, kPOSSequenceSize);
        });
    WhenOpen([&](const User& user) {
        EXPECT_FALSE(user.Find("cmdEdit")->isEnabled());
        user.ClickKeys("posDisplay", {7, 5, 20});
        QTest::keyClick(user.Find("posDisplay"), Qt::Key_Left, Qt::ControlModifier);
        QTest::keyClick(user.Find("posDisplay"), Qt::Key_Space);
        user.Click("cmdEdit");           // its dialog covers this one
        user.Dialog()->activateWindow(); // as a window manager does when that dialog closes
        EXPECT_TRUE(QTest::qWaitForWindowActive(user.Dialog()));
        user.Type("txtBlockID", QStringLiteral("42"));
        EXPECT_TRUE(user.Find("txtBlockID")->hasFocus());
        user.Click("cmdColor_7");
        EXPECT_TRUE(user.Find<QAbstractButton>("cmdColor_7")->isChecked());
        user.Click("cmdNewBlock");
        user.ClickKeys("posDisplay", {3, 20}); // shows the other block, which keeps its key
        EXPECT_EQ(user.Find<QLineEdit>("txtBlockID")->text(), QStringLiteral("42"));
        user.ClickKeys("posDisplay", {3});
        user.ClickKeys("posDisplay", {20}, Qt::ControlModifier); // the other block loses it
        EXPECT_EQ(user.Find<QListWidget>("lstBlocks")->count(), 2);
        user.ClickKeys("posDisplay", {7}, Qt::ControlModifier);
        QTest::keyClick(user.Dialog(), Qt::Key_Z, Qt::ControlModifier); // undoes that
        EXPECT_TRUE(user.Find("cmdUndo")->isEnabled());

        // The ring shows the block that would be removed.
        auto* grid = user.Find<KeyGrid>("posDisplay");
        const auto current = [&] { return user.Find<QLineEdit>("txtBlockID")->text(); };
        grid->setFocus();
        grid->SetFocusKey(4);
        QTest::keyClick(grid, Qt::Key_Right);
        EXPECT_EQ(current(), QStringLiteral("42"));
        QTest::keyClick(grid, Qt::Key_Left, Qt::ControlModifier);
        EXPECT_EQ(current(), QStringLiteral("42"));
        QTest::keyClick(grid, Qt::Key_Up);
        QTest::keyClick(grid, Qt::Key_Home);
        EXPECT_EQ(current(), QString());
        EXPECT_FALSE(user.Find("cmdClean_0")->isEnabled());
        user.Find<QListWidget>("lstBlocks")->setCurrentRow(1);
        EXPECT_EQ(user.Find<QLineEdit>("txtBlockID")->text(), QStringLiteral("42"));
        user.Click("cmdOK");
    });
    pos.cmdEdit_Click();
    EXPECT_TRUE(pos.DataChanged());
    EXPECT_EQ(pos.PosData().Block(5).ColorID(), 7);
    keyboard.Download(pos);
    EXPECT_TRUE(keyboard.Holds(MODULE_POS, Bytes("FF 00*31  FF 00*31"
                                                 "  01 00*31" // 3 and 20
                                                 "  FF 00*31"
                                                 "  02 1E 9E 00*29" // 5, 7 and 19
                                                 "  FF 00*31"
                                                 "  02 00*31")));
    EXPECT_TRUE(keyboard.Holds(MODULE_POS, Bytes("02 00*31  01 00*31  FF"), 18 * 32));

    WhenOpen([](const User& user) {
        EXPECT_FALSE(user.Find("cmdUndo")->isEnabled());
        user.ClickKeys("posDisplay", {50});
        EXPECT_TRUE(user.Leave({}));
        EXPECT_TRUE(user.Dialog()->isVisible());
        user.Click("cmdUndo");
        EXPECT_FALSE(user.Leave({})); // nothing to lose any more
        EXPECT_FALSE(user.Dialog()->isVisible());
    });
    pos.SetDataChanged(false);
    pos.cmdEdit_Click();
    EXPECT_FALSE(pos.DataChanged());
    EXPECT_EQ(pos.PosData().FindBlockForKey(50), 0);

    const Subscription removes =
        programmer.RemoveBlock.Subscribe([](Integer, bool& fCancel) { fCancel = false; });
    WhenOpen([](const User& user) {
        auto* blocks = user.Find<QListWidget>("lstBlocks");
        const int count = blocks->count();
        blocks->setCurrentRow(1);
        user.Click("cmdClean_0");
        EXPECT_EQ(blocks->count(), count - 1) << "only the chosen block";
        user.Click("cmdCancel");
    });
    pos.cmdEdit_Click();
}

} // namespace
} // namespace qx::test
