// The edits of a configuration can be undone and redone, each with its name.
#include "host/History.h"

#include "qxcontrols/device/QXCommonKeyboard.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/readers/QXBarcode.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace qx;
using host::Section;

struct Edited {
    Edited() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl"));
        configuration = std::make_unique<host::Configuration>(Platform(), &layout, nullptr);
        history = std::make_unique<host::History>(*configuration);
    }
    template <typename C>
    C& Control(const char* key) {
        return dynamic_cast<C&>(configuration->Find(key)->Control());
    }
    void Delay(Integer nDelay) {
        auto& control = Control<QXCommonKeyboard>("commonKeyboard");
        control.SetOutputDelay(static_cast<Byte>(nDelay));
        Note(control);
    }
    void MinLength(Integer nLength) {
        auto& control = Control<QXBarcode>("barcode");
        control.BitPage(BP_Code39).SetMinSize(nLength);
        Note(control);
    }
    bool Note(ModuleControl& control) {
        control.SetDataChanged(true);
        return history->Note();
    }
    [[nodiscard]] std::string Now() const { return history->Document().ToText(); }

    QXKeyboardLayoutData layout;
    std::unique_ptr<host::Configuration> configuration;
    std::unique_ptr<host::History> history;
};

TEST(History, UndoesToTheStartAndRedoesToTheEndWhateverWasEdited) {
    Edited edited;
    std::mt19937 random(4); // NOLINT: the same walk every time
    std::vector<std::string> states = {edited.Now()};
    for (int i = 0; i < 40; ++i) {
        edited.history->Seal();
        const auto value = static_cast<Integer>(1 + random() % 40);
        random() % 2 == 0 ? edited.Delay(value) : edited.MinLength(value);
        if (edited.Now() != states.back())
            states.push_back(edited.Now());
    }
    for (std::size_t i = states.size() - 1; i-- > 0;) {
        edited.history->Undo();
        ASSERT_EQ(edited.Now(), states[i]);
        ASSERT_EQ(edited.history->IsSaved(), i == 0);
    }
    EXPECT_FALSE(edited.history->CanUndo());
    for (std::size_t i = 1; i < states.size(); ++i) {
        edited.history->Redo();
        ASSERT_EQ(edited.Now(), states[i]);
    }
    EXPECT_FALSE(edited.history->CanRedo());
}

TEST(History, NamesStepsAndMakesOneOfARun) {
    Edited edited;
    edited.MinLength(3);
    edited.MinLength(4);
    EXPECT_EQ(ToText(edited.history->ToUndo().name), "Barcode reader › Code 39 › Shortest code");
    edited.history->Undo();
    EXPECT_FALSE(edited.history->CanUndo()) << "a run is one step";
    EXPECT_EQ(ToText(edited.history->ToRedo().name), "Barcode reader › Code 39 › Shortest code");
    edited.Delay(9);
    EXPECT_FALSE(edited.history->CanRedo()) << "an edit after undo discards the redo steps";
    EXPECT_FALSE(edited.Note(edited.Control<QXCommonKeyboard>("commonKeyboard")))
        << "nothing has changed";

    edited.history->MarkSaved();
    edited.Delay(10);
    EXPECT_FALSE(edited.history->IsSaved());
    edited.history->Undo();
    EXPECT_TRUE(edited.history->IsSaved()) << "the saved state is a separate step";
    edited.history->Undo();
    EXPECT_FALSE(edited.history->IsSaved()) << "undone after saving";
    edited.Delay(11); // in place of the saved state
    edited.history->Undo();
    edited.history->Redo();
    EXPECT_FALSE(edited.history->IsSaved()) << "the saved state can no longer be reached";
}

TEST(History, AnEditThatGoesOnJoinsTheLastStepOfItsSection) {
    Edited edited;
    const std::string before = edited.Now();
    edited.Delay(9);
    const std::string afterDelay = edited.Now();
    auto& barcode = edited.Control<QXBarcode>("barcode");
    const auto goOn = [&](BarcodePage page) {
        edited.history->Seal();
        barcode.BitPage(page).SetMinSize(7);
        barcode.SetDataChanged(true);
        EXPECT_TRUE(edited.history->Note(true));
    };
    goOn(BP_Code39); // of another section
    goOn(BP_Code93);
    edited.history->Undo();
    EXPECT_EQ(edited.Now(), afterDelay);
    edited.history->Redo();
    edited.history->MarkSaved();
    const std::string saved = edited.Now();
    goOn(BP_Code11);
    edited.history->Undo();
    EXPECT_EQ(edited.Now(), saved) << "the saved state is a separate step";
    edited.history->Undo();
    edited.history->Undo();
    EXPECT_EQ(edited.Now(), before);
}

// The oldest of very many steps are dropped, and eventually the saved state with them.
TEST(History, KnowsTheSavedStateAmongVeryManySteps) {
    Edited edited;
    int made = 0;
    const auto steps = [&](int count) {
        for (int i = 0; i < count; ++i) {
            edited.history->Seal();
            edited.Delay(static_cast<Integer>(20 + ++made % 2));
        }
    };
    steps(3);
    edited.history->MarkSaved();
    const std::string saved = edited.Now();
    steps(498); // drops one
    while (!edited.history->IsSaved() && edited.history->CanUndo())
        edited.history->Undo();
    EXPECT_TRUE(edited.history->IsSaved());
    EXPECT_EQ(edited.Now(), saved);
    steps(501);
    while (edited.history->CanUndo())
        edited.history->Undo();
    EXPECT_FALSE(edited.history->IsSaved());
}

// Only edits count: selecting and showing are not edits.
TEST(History, NotesEditsOnly) {
    Edited edited;
    auto& control = edited.Control<QXCommonKeyboard>("commonKeyboard");
    control.SetOutputDelay(99);
    EXPECT_FALSE(edited.history->Note());
    EXPECT_TRUE(edited.Note(control));
    EXPECT_FALSE(edited.history->Note()) << "already recorded";
    EXPECT_TRUE(control.DataChanged()) << "until it is saved or transferred";
    edited.history->MarkSaved();
    EXPECT_FALSE(control.DataChanged());
    edited.history->Undo();
    EXPECT_EQ(control.OutputDelay(), 6);
    EXPECT_TRUE(control.DataChanged()) << "it differs from the saved state";
}

// A state that no document accepts is still undone and redone exactly.
TEST(History, RestoresStatesThatNoDocumentAccepts) {
    Edited edited;
    auto& layered = edited.Control<QXLayeredFuncKeys>("layeredFuncKeys");
    auto& pos = edited.Control<QXPos>("pos");
    auto& barcode = edited.Control<QXBarcode>("barcode");
    const std::string description(70, 'x');
    const std::string keyString = " -1300  0 30" + std::string(600, '9');
    layered.Layer(2).SetKeyDesc(3, description);
    layered.Layer(2).GetKey(3).SetKeyString(keyString);
    const Guid guid = layered.Identifier();
    layered.SetIdentifier({1, 2, 3, {}});
    edited.Note(layered);
    EXPECT_EQ(ToText(edited.history->ToUndo().name), "Layered function keys › Identifier");
    EXPECT_EQ(edited.history->ToUndo().others, 2U);
    POSBlock& block = pos.PosData().Block(5); // not the slot of its lowest key
    block.AddKey(5);
    block.AddKey(2);
    block.SetBlockID(-7);
    pos.PosData().CalcDefinedBlockNum();
    edited.Note(pos);
    barcode.BitPage(BP_CommonSettings).Flag(3).SetValue(false); // not stored in any bit
    barcode.BitPage(BP_MSI).SetMaxSize(300);
    edited.Note(barcode);

    for (int i = 0; i < 3; ++i)
        edited.history->Undo();
    EXPECT_EQ(layered.Layer(2).GetKeyDesc(3), "");
    EXPECT_EQ(layered.Layer(2).GetKey(3).Length(), 0);
    EXPECT_EQ(ToText(layered.Identifier()), ToText(guid));
    EXPECT_EQ(pos.PosData().Block(5).BlockSize(), 0);
    EXPECT_EQ(pos.lblBlockNum.Caption, "0") << "the display must follow";
    EXPECT_TRUE(barcode.BitPage(BP_CommonSettings).Flag(3).Value());
    for (int i = 0; i < 3; ++i)
        edited.history->Redo();
    EXPECT_EQ(layered.Layer(2).GetKeyDesc(3), description);
    EXPECT_EQ(layered.Layer(2).GetKey(3).KeyString(), keyString);
    EXPECT_EQ(ToText(layered.Identifier()), ToText(Guid{1, 2, 3, {}}));
    EXPECT_EQ(pos.PosData().Block(5).GetKey(2), 2);
    EXPECT_EQ(pos.PosData().Block(5).BlockID(), -7);
    EXPECT_EQ(pos.lblBlockNum.Caption, "1");
    EXPECT_FALSE(barcode.BitPage(BP_CommonSettings).Flag(3).Value());
    EXPECT_EQ(barcode.BitPage(BP_MSI).MaxSize(), 300);
}

TEST(History, SectionsThatAreEditedJoinTheDocumentAndLeaveItByUndo) {
    Edited edited;
    Section* common = edited.configuration->Find("commonKeyboard");
    edited.history->Restart({common}, true);
    EXPECT_EQ(edited.history->Document().Find("barcode"), nullptr);
    edited.MinLength(7);
    EXPECT_NE(edited.history->Document().Find("barcode"), nullptr);
    edited.history->Undo();
    EXPECT_EQ(edited.history->Document().Find("barcode"), nullptr);
    EXPECT_EQ(edited.Control<QXBarcode>("barcode").BitPage(BP_Code39).MinSize(), 1);
}

} // namespace
