#include "qxcontrols/keys/SequenceDraft.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/SequenceText.h"
#include "qxcontrols/keys/TypedText.h"

#include <gtest/gtest.h>

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
        std::string shown;
        for (std::size_t i = 0; i < draft->Items().size(); ++i)
            shown += (i == draft->Caret() ? "|" : " ") + draft->Items()[i].text;
        return shown + (draft->Caret() == draft->Items().size() ? "|" : "");
    }

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

} // namespace qx::test
