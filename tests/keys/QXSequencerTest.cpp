#include "qxcontrols/keys/QXSequencer.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/settings/QXProgSettings.h"
#include "support/TestKeyboard.h"

#include <stdexcept>

namespace qx::test {

namespace {

// A host whose user performs the test's actions while the form is open.
class SequencerTest : public testing::Test, public ModalForms, public FormTimers {
protected:
    SequencerTest() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl"));
        sequencer.SetKeyboard(&keyboard.access);
        sequencer.SetLayoutSource(&layout);
    }

    void ShowModal(frmSequencer& form) override {
        EXPECT_TRUE(keyboard.driver.positionMode);
        EXPECT_TRUE(timer->Enabled());
        if (activates)
            form.Form_Activate();
        shown = &form;
        user(form);
        form.Form_Unload();
    }
    std::unique_ptr<FormTimer> Create() override {
        auto created = std::make_unique<FormTimer>();
        timer = created.get();
        return created;
    }

    Platform Services() {
        Platform platform;
        platform.modalForms = this;
        platform.formTimers = this;
        return platform;
    }

    // Edits "  5", with at most `most` codes; returns the new sequence or "unchanged".
    std::string Edit(std::function<void(frmSequencer&)> does, Integer most = 10) {
        user = std::move(does);
        std::string edited = "unchanged";
        const bool isNew = sequencer.ShowSequenceEditor(30, "  5", edited, most);
        EXPECT_EQ(isNew, edited != "unchanged");
        EXPECT_FALSE(keyboard.driver.positionMode);
        EXPECT_FALSE(timer->Enabled());
        return edited;
    }

    TestKeyboard keyboard{{{MODULE_KEYBOARD, 0x1000}}};
    QXKeyboardLayoutData layout;
    FormTimer* timer = nullptr;
    frmSequencer* shown = nullptr; // the form shown last
    bool activates = true;         // the host reports when the form gets the focus
    std::function<void(frmSequencer&)> user;
    QXSequencer sequencer{Services()};
};

} // namespace

TEST_F(SequencerTest, ClicksRecordPressAndRelease) {
    EXPECT_EQ(Edit([](frmSequencer& form) {
                  form.layoutDisplay.cmdKey_Click(31);
                  EXPECT_EQ(form.txtSequence.Text, "4 A ");
                  form.chkShowDetails.Value = 1;
                  form.chkShowDetails_Click();
                  EXPECT_EQ(form.txtSequence.Text, "4 A ^A ");
                  form.cmdOK_Click();
              }),
              "  5 31159");
}

TEST_F(SequencerTest, RealKeysAreAskedForWithoutOverlap) {
    keyboard.driver.positionKeys = {-1, 31, -2, 0, 159, 4711, 65536 + 32};
    const std::string edited = Edit([&](frmSequencer& form) {
        const auto refreshed = form.Refreshed.Subscribe(
            [&] { EXPECT_FALSE(timer->Enabled()) << "a tick could overlap"; });
        EXPECT_EQ(timer->Interval(), 100);
        for (int tick = 0; tick < 7; ++tick)
            timer->Tick();
        form.Form_Deactivate();
        timer->Tick();
        form.Form_Activate();
        EXPECT_TRUE(timer->Enabled());
        form.LeaveWithOK();
    });
    EXPECT_EQ(edited, "  5 31159");
    EXPECT_TRUE(keyboard.driver.positionKeys.empty());
}

TEST_F(SequencerTest, ClicksOnTheTwinComeFromTheKeyboard) {
    EXPECT_EQ(Edit([&](frmSequencer& form) {
                  form.SetPressesTwin(true);
                  form.layoutDisplay.cmdKey_Click(30); // no twin: as usual
                  EXPECT_EQ(form.KeyString(), "  5 30158");
                  form.pressTwinKey = [&](Long lCode) {
                      keyboard.driver.positionKeys.push_back(lCode);
                  };
                  form.layoutDisplay.cmdKey_Click(31);
                  EXPECT_EQ(form.KeyString(), "  5 30158");
                  timer->Tick();
                  timer->Tick();
                  form.cmdOK_Click();
              }),
              "  5 30158 31159");
}

TEST_F(SequencerTest, HeldKeysMakeAChordAndCodesGoInAtTheCaret) {
    EXPECT_EQ(Edit([](frmSequencer& form) {
                  form.cmdClean_Click(1);
                  for (const Byte key : std::initializer_list<Byte>{58, 60})
                      form.Hold(key, true);
                  form.Hold(60, false);
                  form.layoutDisplay.cmdKey_Click(48);
                  EXPECT_TRUE(form.Held().empty());
                  form.SetCaret(1);
                  form.AddCode(31);
                  EXPECT_TRUE(form.Insert({5, 133}));
                  EXPECT_EQ(form.Caret(), 4U);
                  EXPECT_FALSE(form.Insert({1, 2, 3, 4}));
                  form.Hold(58, true);
                  form.layoutDisplay.cmdKey_Click(30);
                  EXPECT_TRUE(form.lblSizeMsg.Visible) << "four codes do not fit";
                  form.cmdClean_Click(0);
                  form.AddCode(7); // at the end again
                  form.cmdOK_Click();
              }),
              " 58 31  5133 48176  7");
    EXPECT_EQ(Edit([](frmSequencer& form) {
                  form.Rearrange({31, 159, 5}, 1);
                  form.layoutDisplay.cmdKey_Click(30);
                  form.txtTyped.Text = "{9}"; // pending: not lost
                  form.Rearrange({31}, 0);
                  form.AddCode(8);
                  form.cmdOK_Click();
              }),
              "  9  8");
}

TEST_F(SequencerTest, AFullSequenceRecordsNoMoreKeys) {
    EXPECT_EQ(Edit(
                  [](frmSequencer& form) {
                      form.layoutDisplay.cmdKey_Click(31); // no room for the release
                      EXPECT_TRUE(form.lblSizeMsg.Visible);
                      EXPECT_EQ(form.lblRemaining.Caption, "0");
                      form.cmdClean_Click(1);
                      EXPECT_FALSE(form.lblSizeMsg.Visible);
                      form.layoutDisplay.cmdKey_Click(31);
                      form.AddCode(5);
                      EXPECT_TRUE(form.lblSizeMsg.Visible);
                      form.cmdClean_Click(0);
                      EXPECT_FALSE(form.lblSizeMsg.Visible);
                      form.ShowSizeMsg();
                      TraceLog log;
                      int refreshed = 0;
                      const auto noted = form.Refreshed.Subscribe([&] { ++refreshed; });
                      form.AddCode(32);
                      std::erase_if(log.lines, [](const std::string& line) {
                          return !line.starts_with("[frmSequencer]");
                      });
                      EXPECT_EQ(log.lines,
                                (std::vector<std::string>{"[frmSequencer].AddCode",
                                                          "[frmSequencer].DisplayCurrentSeq",
                                                          "[frmSequencer].HideSizeMsg"}));
                      EXPECT_EQ(refreshed, 1);
                      EXPECT_FALSE(form.lblSizeMsg.Visible);
                      form.LeaveWithOK();
                  },
                  2),
              " 31 32");
    EXPECT_EQ(Edit(
                  [](frmSequencer& form) {
                      form.cmdClean_Click(1);
                      form.cmdClean_Click(0); // nothing left to remove
                      form.AddCode(32);
                      EXPECT_TRUE(form.lblSizeMsg.Visible);
                      form.LeaveWithOK();
                  },
                  0),
              "");
}

TEST_F(SequencerTest, ValidTextIsAccepted) {
    const auto type = [](frmSequencer& form, const char* text) {
        form.txtTyped.Text = text;
        form.txtTyped_Change();
        return form.ApplyTyped();
    };
    EXPECT_EQ(Edit([&](frmSequencer& form) {
                  EXPECT_EQ(form.txtTyped.Text, "4");
                  EXPECT_FALSE(form.IsChanged());
                  form.txtTyped.Text = "ctrl";
                  EXPECT_TRUE(form.IsChanged()); // typed, but not accepted yet
                  EXPECT_TRUE(type(form, "ctrl+c {158}"));
                  EXPECT_TRUE(form.IsChanged());
                  EXPECT_EQ(form.KeyString(), " 58 48176186158");
                  EXPECT_EQ(form.txtTyped.Text, "Ctrl C ^C ^Ctrl ^CapsLock");
              }),
              "unchanged");
    EXPECT_EQ(Edit(
                  [&](frmSequencer& form) {
                      for (const char* wrong : {"Ctrl+Nonsense", "{256}", "{0}"}) {
                          EXPECT_FALSE(type(form, wrong)) << wrong;
                          EXPECT_TRUE(form.lblTypedFault.Visible) << wrong;
                          EXPECT_EQ(form.txtTyped.Text, wrong);
                          EXPECT_EQ(form.KeyString(), "  5");
                      }
                      form.AddCode(31); // waits until the text is valid, like OK
                      form.RemoveLastCode();
                      form.cmdOK_Click();
                      form.chkShowDetails_Click();
                      EXPECT_FALSE(form.OK());
                      EXPECT_EQ(form.txtTyped.Text, "{0}");
                      form.txtTyped.Text = "B ^B";
                      form.txtTyped_Change();
                      EXPECT_FALSE(form.lblTypedFault.Visible);
                      form.AddCode(31); // appended after the typed keys
                      EXPECT_EQ(form.KeyString(), " 50178 31");
                      form.txtTyped.Text = "nonsense";
                      form.RemoveAllCodes();
                      EXPECT_EQ(form.txtTyped.Text, "");
                      EXPECT_FALSE(type(form, "A B C D"));
                      EXPECT_EQ(form.lblTypedFault.Caption, "the text has 4 codes, only 3 fit");
                      EXPECT_EQ(form.TypedTooMany(), 4);
                      EXPECT_FALSE(form.lblSizeMsg.Visible);
                      EXPECT_FALSE(type(form, "nonsense"));
                      EXPECT_EQ(form.TypedTooMany(), 0);
                      std::string codes; // exceeds any sequence
                      for (int code = 0; code < 32768; ++code)
                          codes += "{30} ";
                      EXPECT_FALSE(type(form, codes.c_str()));
                      EXPECT_TRUE(form.lblTypedFault.Visible);
                      form.txtTyped.Text = "A B C";
                      form.cmdOK_Click();
                  },
                  3),
              " 31 50 48");
}

TEST_F(SequencerTest, WhileTheUserTypesTheKeyboardTypes) {
    Edit([&](frmSequencer& form) {
        form.txtTyped_GotFocus();
        form.Form_Deactivate(); // another window of the program, and back
        form.Form_Activate();
        form.AppDeactivate();
        form.AppActivate();
        EXPECT_FALSE(keyboard.driver.positionMode);
        EXPECT_FALSE(timer->Enabled());
        form.txtTyped_LostFocus();
        EXPECT_TRUE(keyboard.driver.positionMode);
        EXPECT_TRUE(timer->Enabled());
        form.txtTyped_GotFocus(); // leaves with the focus there
    });
    Edit([&](frmSequencer&) { EXPECT_TRUE(timer->Enabled()); });
}

TEST_F(SequencerTest, OtherwiseNothingChanges) {
    EXPECT_EQ(Edit([](frmSequencer& form) {
                  form.AddCode(9);
                  form.cmdCancel_Click();
              }),
              "unchanged");
    EXPECT_EQ(Edit([](frmSequencer& form) { form.AddCode(9); }), "unchanged"); // not answered
    EXPECT_THROW(Edit([](frmSequencer&) { throw std::runtime_error("the host fails"); }),
                 std::runtime_error);
    EXPECT_FALSE(keyboard.driver.positionMode);
    EXPECT_FALSE(timer->Enabled());

    keyboard.driver.statuses["QXCFG_EnablePositionMode"] = 3;
    const TraceLog log;
    EXPECT_EQ(Edit([](frmSequencer&) { ADD_FAILURE() << "the form was opened"; }), "unchanged");
    EXPECT_TRUE(log.Has("UNABLE TO ENABLE POSITION PROG MODE"));
    EXPECT_EQ(shown->layoutDisplay.LayoutSource(), nullptr);
    keyboard.driver.calls.clear();
    shown->AppActivate(); // has no keyboard any more
    EXPECT_TRUE(keyboard.driver.calls.empty());

    keyboard.driver.statuses.clear();
    std::string edited = "unchanged";
    const std::string tooLong(3 * 40000, ' ');
    user = [](frmSequencer&) { ADD_FAILURE() << "the form was opened"; };
    EXPECT_FALSE(sequencer.ShowSequenceEditor(30, tooLong, edited, 10));
    EXPECT_EQ(edited, "unchanged");
    EXPECT_TRUE(log.Has("ERROR: in QXSequencer.ShowSequenceEditor !!!!!!!!"));
    EXPECT_FALSE(keyboard.driver.positionMode);
    sequencer.SetKeyboard(nullptr);
    EXPECT_EQ(Edit([](frmSequencer&) { ADD_FAILURE() << "the form was opened"; }), "unchanged");
}

TEST_F(SequencerTest, AnOpenEditorIsNotOpenedAgain) {
    int times = 0;
    const TraceLog log;
    EXPECT_EQ(Edit([&](frmSequencer& form) {
                  ASSERT_EQ(++times, 1) << "the form was opened again";
                  form.AddCode(31);
                  std::string other = "unchanged";
                  EXPECT_FALSE(sequencer.ShowSequenceEditor(32, " 33", other, 5));
                  EXPECT_EQ(other, "unchanged");
                  EXPECT_TRUE(keyboard.driver.positionMode && timer->Enabled());
                  form.LeaveWithOK();
              }),
              "  5 31");
    EXPECT_TRUE(log.Has("ERROR: in QXSequencer.ShowSequenceEditor !!!!!!!!"));
}

TEST_F(SequencerTest, AFormThatWasDeactivatedAsItClosedScansAgain) {
    Edit([](frmSequencer& form) { form.Form_Deactivate(); });
    keyboard.driver.positionKeys = {31, 159};
    user = [this](frmSequencer& form) {
        timer->Tick();
        timer->Tick();
        form.LeaveWithOK();
    };
    activates = false;
    EXPECT_EQ(Edit(user), "  5 31159");
}

TEST_F(SequencerTest, TextsAndColoursReachTheFormOpenOrNot) {
    MemoryRegistry registry;
    QXProgSettings preferences(registry);
    sequencer.SetPrefSource(&preferences);
    const TraceLog log;
    const auto change = [&](const char* caption, Long color) {
        sequencer.SetEditorCaption(caption);
        preferences.SetColorCurr(color);
        sequencer.Translate();
        sequencer.ReloadKeySettings();
        sequencer.SetKeyFontSize(9);
    };
    change("before", 5);
    for (const std::string& line : log.lines)
        EXPECT_EQ(line.find("CRITICAL"), std::string::npos) << line;
    Edit([&](frmSequencer& form) {
        EXPECT_EQ(form.lblCaption.Caption, "before");
        EXPECT_EQ(form.layoutDisplay.cmdKey[30].BackColor, 5);
        change("within", 7);
        EXPECT_EQ(form.lblCaption.Caption, "within");
        EXPECT_EQ(form.layoutDisplay.cmdKey[30].BackColor, 7);
        EXPECT_EQ(form.layoutDisplay.UserFontSize(), 9);
    });
}

TEST_F(SequencerTest, InTheBackgroundTheKeyboardTypes) {
    Edit([&](frmSequencer& form) {
        form.AppDeactivate();
        EXPECT_FALSE(keyboard.driver.positionMode);
        form.AppActivate();
        EXPECT_TRUE(keyboard.driver.positionMode);
        int helped = 0;
        const auto help = sequencer.UserNeedsHelp.Subscribe([&] { ++helped; });
        form.imgHelp_Click();
        EXPECT_EQ(helped, 1);
    });
}

} // namespace qx::test
