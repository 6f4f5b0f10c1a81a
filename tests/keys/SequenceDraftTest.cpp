#include "qxcontrols/keys/SequenceDraft.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/SequenceText.h"
#include "qxcontrols/keys/TypedText.h"

#include <gtest/gtest.h>

#include <functional>

namespace qx::test {

namespace {

constexpr Byte kEnter = 43, kCtrl = 58, kAlt = 60, kDelete = 76;

class SequenceDraftTest : public testing::Test {
protected:
    SequenceDraftTest() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl"));
        draft.emplace(layout, 20);
    }
    Byte Key(const std::string& name) { return ParseSequenceText(name, layout).front(); }
    // The items with the caret.
    std::string Shown() const {
        const auto [item, before] = draft->Caret();
        std::string shown;
        for (std::size_t i = 0; i < draft->Items().size(); ++i) {
            const std::string& text = draft->Items()[i].text;
            if (i == item && !before.empty())
                shown += " " + before + "|" + text.substr(before.size());
            else
                shown += (i == item ? "|" : " ") + text;
        }
        return shown + (item == draft->Items().size() ? "|" : "");
    }
    void StepCaret(int steps) {
        for (int i = 0; i < std::abs(steps); ++i)
            draft->StepCaret(steps < 0 ? -1 : 1);
    }
    std::string Codes() const { return SequenceToText(draft->Codes(), layout); }

    QXKeyboardLayoutData layout;
    std::optional<SequenceDraft> draft;
};

} // namespace

TEST_F(SequenceDraftTest, KeysAndTextsArePutInAtTheCaret) {
    EXPECT_TRUE(draft->Insert(CodesThatType("10", layout)));
    EXPECT_TRUE(draft->Press(kEnter));
    EXPECT_EQ(Shown(), " 10 Enter|");
    draft->SetCaret(0);
    draft->Hold(kCtrl, true);
    draft->Hold(kAlt, true);
    EXPECT_TRUE(draft->Press(kDelete));
    EXPECT_EQ(Shown(), " Ctrl+Alt+Del|10 Enter");
    draft->Hold(kCtrl, false);
    draft->Hold(kAlt, false);
    EXPECT_EQ(SequenceToText(draft->Codes(), layout),
              "Ctrl Alt Del ^Del ^Alt ^Ctrl 1 ^1 0 ^0 Enter ^Enter");
    EXPECT_TRUE(draft->Press(Key("2"))) << "between text, it joins it";
    EXPECT_EQ(draft->Items()[1].text, "210");
}

TEST_F(SequenceDraftTest, ARefusedChangeChangesNothing) {
    draft->Start(std::vector<Byte>(18, kEnter));
    const std::vector<Byte> before = draft->Codes();
    EXPECT_EQ(draft->CodesLeft(), 2U);
    EXPECT_FALSE(draft->Insert(CodesThatType("10", layout)));
    draft->Hold(kCtrl, true);
    EXPECT_FALSE(draft->Press(Key("C")));
    EXPECT_EQ(draft->Codes(), before);
    draft->Hold(kCtrl, false);
    EXPECT_TRUE(draft->Press(Key("C")));
    EXPECT_EQ(draft->CodesLeft(), 0U);
    draft->Start(std::vector<Byte>(30, kEnter)); // more than there is room for
    EXPECT_EQ(draft->CodesLeft(), 0U);
    EXPECT_EQ(draft->Codes().size(), 30U);
}

TEST_F(SequenceDraftTest, ItemsAreRemovedAndMoved) {
    draft->Start(ParseSequenceText("Ctrl C ^C ^Ctrl Shift T ^T ^Shift I ^I Enter ^Enter", layout));
    EXPECT_EQ(Shown(), " Ctrl+C Ti Enter|");
    draft->Move(2, 0);
    EXPECT_EQ(Shown(), " Enter|Ctrl+C Ti");
    draft->Move(0, 3);
    EXPECT_EQ(Shown(), " Ctrl+C Ti Enter|");
    draft->Move(0, 2);
    EXPECT_EQ(Shown(), " Ti Ctrl+C|Enter");
    draft->SetCaret(1);
    draft->RemoveBefore();
    EXPECT_EQ(Shown(), " T|Ctrl+C Enter") << "the last character of a text";
    draft->RemoveBefore();
    EXPECT_EQ(Shown(), "|Ctrl+C Enter") << "with its Shift";
    draft->RemoveBefore();
    draft->Remove(0);
    EXPECT_EQ(Shown(), "|Enter");
    draft->Clear();
    EXPECT_EQ(Shown(), "|");
    EXPECT_TRUE(draft->Codes().empty());
}

TEST_F(SequenceDraftTest, BackspaceTakesOneCharacterAfterAnother) {
    draft.emplace(layout, 30);
    EXPECT_TRUE(draft->Insert(CodesThatType("TILL 01", layout)));
    const char* kBlank = "\u2423";
    EXPECT_EQ(Shown(), std::string(" TILL") + kBlank + "01|");
    for (const std::string& shown :
         {std::string(" TILL") + kBlank + "0|", std::string(" TILL") + kBlank + "|",
          std::string(" TILL|"), std::string(" TIL|"), std::string(" TI|")}) {
        draft->RemoveBefore();
        EXPECT_EQ(Shown(), shown);
    }
    EXPECT_EQ(Codes(), "Shift T ^T I ^I ^Shift");
    draft->RemoveBefore();
    draft->RemoveBefore();
    EXPECT_TRUE(draft->Codes().empty()) << "Shift goes with the last of its characters";
    draft->RemoveBefore();
    EXPECT_EQ(Shown(), "|");
}

TEST_F(SequenceDraftTest, TheCaretGoesIntoATextWhereItIsCorrected) {
    const std::vector<Byte> start = CodesThatType("aTILb", layout);
    const auto startAt = [&](int steps) {
        draft->Start(start);
        EXPECT_TRUE(draft->Press(kEnter));
        StepCaret(-7);
        EXPECT_EQ(Shown(), "|aTILb Enter") << "and no further";
        StepCaret(steps);
    };
    struct Row {
        int steps;
        const char* shown;
        std::function<bool(SequenceDraft&)> act;
        const char* after;
        const char* codes; // before Enter
    };
    const auto type = [this](const char* text) {
        return
            [this, text](SequenceDraft& each) { return each.Insert(CodesThatType(text, layout)); };
    };
    const auto back = [](SequenceDraft& each) { return each.RemoveBefore(), true; };
    const auto ahead = [](SequenceDraft& each) { return each.RemoveAfter(), true; };
    const Row rows[] = {
        {0, "|aTILb Enter", ahead, "|TILb Enter", "Shift T ^T I ^I L ^L ^Shift B ^B"},
        {1, " a|TILb Enter", ahead, " a|ILb Enter", "A ^A Shift I ^I L ^L ^Shift B ^B"},
        {1, " a|TILb Enter", type("x"), " ax|TILb Enter",
         "A ^A X ^X Shift T ^T I ^I L ^L ^Shift B ^B"},
        {2, " aT|ILb Enter", back, " a|ILb Enter", "A ^A Shift I ^I L ^L ^Shift B ^B"},
        {2, " aT|ILb Enter", ahead, " aT|Lb Enter", "A ^A Shift T ^T L ^L ^Shift B ^B"},
        {2, " aT|ILb Enter", type("E"), " aTE|ILb Enter",
         "A ^A Shift T ^T E ^E I ^I L ^L ^Shift B ^B"},
        {2, " aT|ILb Enter", type("x"), " aTx|ILb Enter",
         "A ^A Shift T ^T ^Shift X ^X Shift I ^I L ^L ^Shift B ^B"},
        {3, " aTI|Lb Enter",
         [](SequenceDraft& each) {
             each.Hold(kCtrl, true);
             return each.Press(kDelete);
         },
         " aTI Ctrl+Del|Lb Enter",
         "A ^A Shift T ^T I ^I ^Shift Ctrl Del ^Del ^Ctrl Shift L ^L ^Shift B ^B"},
        {3, " aTI|Lb Enter", ahead, " aTI|b Enter", "A ^A Shift T ^T I ^I ^Shift B ^B"},
        {4, " aTIL|b Enter", back, " aTI|b Enter", "A ^A Shift T ^T I ^I ^Shift B ^B"},
        {4, " aTIL|b Enter", ahead, " aTIL|Enter", "A ^A Shift T ^T I ^I L ^L ^Shift"},
        {5, " aTILb|Enter", ahead, " aTILb|", "A ^A Shift T ^T I ^I L ^L ^Shift B ^B"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.codes);
        draft.emplace(layout, 22);
        startAt(row.steps);
        EXPECT_EQ(Shown(), row.shown);
        EXPECT_TRUE(row.act(*draft));
        EXPECT_EQ(Shown(), row.after);
        EXPECT_EQ(Codes().substr(0, Codes().find(" Enter")), row.codes);
    }
    draft.emplace(layout, 17);
    startAt(2);
    const std::vector<Byte> before = draft->Codes();
    EXPECT_FALSE(draft->Insert(CodesThatType("x", layout))) << "Shift needs room, too";
    EXPECT_EQ(draft->Codes(), before);
    EXPECT_TRUE(draft->Insert(CodesThatType("E", layout)));
}

} // namespace qx::test
