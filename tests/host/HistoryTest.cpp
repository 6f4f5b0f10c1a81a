// The edits of a configuration can be undone and done again, each with its name.
#include "host/History.h"

#include "qxcontrols/device/QXCommonKeyboard.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
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
        Control<QXCommonKeyboard>("commonKeyboard").SetOutputDelay(static_cast<Byte>(nDelay));
        history->Note();
    }
    void MinLength(Integer nLength) {
        Control<QXBarcode>("barcode").BitPage(BP_Code39).SetMinSize(nLength);
        history->Note();
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
    EXPECT_EQ(edited.history->UndoName(), "barcode Code39 minimum length");
    edited.history->Undo();
    EXPECT_FALSE(edited.history->CanUndo()) << "a run is one step";
    EXPECT_EQ(edited.history->RedoName(), "barcode Code39 minimum length");
    edited.Delay(9);
    EXPECT_FALSE(edited.history->CanRedo()) << "an edit after undo starts a new way";
    EXPECT_FALSE(edited.history->Note()) << "nothing has changed";

    edited.history->MarkSaved();
    edited.Delay(10);
    EXPECT_FALSE(edited.history->IsSaved());
    edited.history->Undo();
    EXPECT_TRUE(edited.history->IsSaved()) << "what was saved is a step of its own";

    edited.Delay(10);
    edited.history->MarkSaved();
    edited.history->Undo();
    edited.Delay(11);
    EXPECT_FALSE(edited.history->IsSaved()) << "no step leads back to what was saved";
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
