// The POS programmer: the effect of clicks on the blocks, and its requests to the host.
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/pos/POSModuleBlock.h"
#include "qxcontrols/pos/QXPOSProgrammer.h"
#include "support/BlockRoundTrip.h"

#include <functional>
#include <random>
#include <stdexcept>

namespace qx::test {
namespace {

// "3: 3 5 sends  30; 7: 7 sends "
std::string Describe(const POSKeyboard& keyboard) {
    std::string text;
    for (Integer slot = 1; slot <= POSKeyboard::kSlots; ++slot) {
        const POSBlock& block = keyboard.Block(slot);
        if (block.BlockSize() == 0)
            continue;
        text += (text.empty() ? "" : "; ") + std::to_string(slot) + ":";
        for (Integer i = 1; i <= block.BlockSize(); ++i)
            text += " " + std::to_string(block.GetKey(i));
        if (block.Sequence().Length() > 0)
            text += " sends" + block.Sequence().KeyString();
    }
    return text;
}

// A host whose user performs the test's actions while the programmer is open.
class POSProgrammerTest : public testing::Test, public ModalForms {
protected:
    POSProgrammerTest() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl"));
        programmer.SetLayoutSource(&layout);
    }

    void ShowModal(frmPOSProgrammer& form) override { user(form); }

    Platform Services() {
        Platform platform;
        platform.modalForms = this;
        return platform;
    }

    // The blocks after the user has done this and pressed OK.
    std::string Edit(std::function<void(frmPOSProgrammer&)> does) {
        user = [does = std::move(does)](frmPOSProgrammer& form) {
            does(form);
            form.cmdOK_Click();
        };
        EXPECT_TRUE(programmer.ShowPosProgrammer(keyboard));
        return Describe(keyboard);
    }

    static void Click(frmPOSProgrammer& form, std::initializer_list<Integer> keys) {
        for (const Integer key : keys)
            form.posDisplay.cmdPOS_Click(key);
    }

    // Sets the current block's sequence, like a user.
    void Send(frmPOSProgrammer& form, const std::string& sKeyString) {
        const Subscription answer = programmer.EditSequence.Subscribe(
            [&](Integer, const std::string&, bool& fCancelEdit, std::string& sInSeq) {
                fCancelEdit = false;
                sInSeq = sKeyString;
            });
        form.cmdEdit_Click();
    }

    QXKeyboardLayoutData layout;
    POSKeyboard keyboard;
    std::function<void(frmPOSProgrammer&)> user;
    QXPOSProgrammer programmer{Services()};
};

// Whether each key is in at most one block and each block in its lowest key's slot, and whether the
// grid shows exactly the keys of blocks as used.
testing::AssertionResult IsSound(const frmPOSProgrammer& form) {
    std::array<int, POSKeyboard::kSlots + 1> uses{};
    for (Integer slot = 1; slot <= POSKeyboard::kSlots; ++slot) {
        const POSBlock& block = form.PosData().Block(slot);
        for (Integer i = 1; i <= block.BlockSize(); ++i) {
            if (block.GetKey(i) < slot || (i == 1) != (block.GetKey(i) == slot))
                return testing::AssertionFailure() << "slot " << slot << " is not its lowest key's";
            ++uses.at(static_cast<std::size_t>(block.GetKey(i)));
        }
    }
    for (Integer key = 1; key <= POSKeyboard::kSlots; ++key) {
        const int used = uses.at(static_cast<std::size_t>(key));
        if (used > 1 || form.posDisplay.IsUsedKey(key) != (used == 1))
            return testing::AssertionFailure() << "key " << key << " is in " << used << " blocks";
    }
    if (form.CurrBlock() != 0 && form.PosData().Block(form.CurrBlock()).BlockSize() == 0)
        return testing::AssertionFailure() << "the current block is free";
    return testing::AssertionSuccess();
}

TEST_F(POSProgrammerTest, ClicksPutKeysTogetherInTheLowestKeysSlot) {
    const auto steps = [](frmPOSProgrammer& form) {
        Click(form, {20, 30, 10}); // a lower key joins: the block moves
        EXPECT_EQ(form.CurrBlock(), 10);
        EXPECT_EQ(Describe(form.PosData()), "10: 10 20 30");
        EXPECT_EQ(form.posDisplay.Focus(), 10);
        Click(form, {10}); // the major key leaves: the block moves
        EXPECT_EQ(form.CurrBlock(), 20);
        form.cmdNewBlock_Click();
        Click(form, {5, 20}); // a key of another block shows that block
        EXPECT_EQ(form.CurrBlock(), 20);
        EXPECT_EQ(Describe(form.PosData()), "5: 5; 20: 20 30");
        Click(form, {5});
        EXPECT_EQ(form.CurrBlock(), 5);
        form.cmdNewBlock_Click();
        Click(form, {5});
        form.TakeKey(20); // moves here
        EXPECT_EQ(Describe(form.PosData()), "5: 5 20; 30: 30");
        EXPECT_EQ(form.lblFreeKeys.Caption, "102");
        form.TakeKey(30);
        EXPECT_EQ(Describe(form.PosData()), "5: 5 20 30");
        Click(form, {5, 20, 30}); // the last key leaves: the block is gone
        EXPECT_EQ(form.CurrBlock(), 0);
        EXPECT_TRUE(form.lstBlocks.Items.empty());
        Click(form, {0, 106, 150}); // the grid has more keys than the module
        EXPECT_EQ(form.CurrBlock(), 0);
        Click(form, {105});
    };
    EXPECT_EQ(Edit(steps), "105: 105");
}

TEST_F(POSProgrammerTest, ChangesAreUndoneOneByOne) {
    const auto steps = [&](frmPOSProgrammer& form) {
        const auto renumber = [&](std::initializer_list<const char*> texts) {
            for (const char* text : texts) {
                form.txtBlockID.Text = text;
                form.txtBlockID_Change();
            }
        };
        const std::vector<std::function<void()>> changes = {
            [&] { Click(form, {7}); },
            [&] { Click(form, {9}); },
            [&] {
                renumber({"4", "40", "400"});
            }, // counts as one change
            [&] { form.cmdColor_Click(5); },
            [&] { renumber({"8"}); },
            [&] { Send(form, " 30"); },
            [&] { Click(form, {9}); },
            [&] { form.cmdNewBlock_Click(), Click(form, {3}); },
            [&] { form.TakeKey(9), form.ReachKey(3); },
            [&] { form.cmdClean_Click(0); },
        };
        const auto state = [&] {
            const POSBlock& block = form.PosData().Block(7);
            return Describe(form.PosData()) + " / " + std::to_string(block.BlockID()) + " " +
                   std::to_string(block.ColorID());
        };
        std::vector<std::string> states;
        for (const auto& change : changes) {
            states.push_back(state());
            change();
            EXPECT_TRUE(form.IsChanged() && form.cmdUndo.Enabled);
        }
        for (; !states.empty(); states.pop_back()) {
            EXPECT_TRUE(form.IsChanged());
            form.cmdUndo_Click();
            EXPECT_EQ(state(), states.back());
            EXPECT_TRUE(form.CurrBlock() == 0 ||
                        form.PosData().Block(form.CurrBlock()).BlockSize() > 0);
        }
        EXPECT_FALSE(form.IsChanged() || form.cmdUndo.Enabled);
        form.cmdUndo_Click();
        for (int click = 0; click < 101; ++click)
            form.cmdNewBlock_Click(), Click(form, {static_cast<Integer>(click + 1)});
        for (int click = 0; click < 200; ++click)
            form.cmdUndo_Click();
        EXPECT_EQ(Describe(form.PosData()), "1: 1"); // the last hundred changes are kept
        EXPECT_TRUE(form.IsChanged());
    };
    EXPECT_EQ(Edit(steps), "1: 1");
    Edit([](frmPOSProgrammer& form) {
        EXPECT_FALSE(form.IsChanged());
        form.ReachKey(1); // removal applies to the focused key
        EXPECT_EQ(form.CurrBlock(), 1);
        form.ReachKey(2);
        EXPECT_EQ(form.CurrBlock(), 0);
        form.cmdClean_Click(0);
        form.ReachKey(106);
        EXPECT_FALSE(form.IsChanged());
    });
}

TEST_F(POSProgrammerTest, AnyClicksLeaveAModelThatTheKeyboardGivesBackTheSame) {
    std::mt19937 random(20); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same clicks in every run
    bool fCancel = false;
    const Subscription asked = programmer.RemoveBlock.Subscribe(
        [&](Integer, bool& fCancelRemoving) { fCancelRemoving = fCancel; });
    Edit([&](frmPOSProgrammer& form) {
        int refreshed = 0;
        const Subscription noted = form.Refreshed.Subscribe([&] { ++refreshed; });
        for (int step = 0; step < 3000; ++step) {
            fCancel = random() % 2 == 0;
            const auto choice = random() % 12;
            const auto any = static_cast<Integer>(random() % 108);
            refreshed = 0;
            if (choice == 0)
                form.cmdNewBlock_Click();
            else if (choice == 1 && any < 20)
                form.cmdClean_Click(0);
            else if (choice == 2)
                Send(form, "  " + std::to_string(any % 9 + 1));
            else if (choice == 4)
                form.TakeKey(any);
            else if (choice == 5)
                form.cmdUndo_Click();
            else if (choice == 3) {
                form.lstBlocks.ListIndex = any;
                form.lstBlocks_Click();
            } else
                Click(form, {static_cast<Integer>(any % 20 + (step / 1000) * 43)});
            ASSERT_TRUE(IsSound(form)) << "step " << step;
            ASSERT_LE(refreshed, 1);
            POSKeyboard readBack;
            DecodePOSModuleBlock(EncodePOSModuleBlock(form.PosData()), readBack);
            ASSERT_EQ(Describe(readBack), Describe(form.PosData())) << "step " << step;
        }
        EXPECT_GT(form.PosData().BlockNum(), 3) << "the clicks created hardly any blocks";
    });
}

TEST_F(POSProgrammerTest, ASequenceIsNotLostWithoutAQuestion) {
    std::vector<Integer> asked;
    bool fAnswer = true;
    const Subscription noted = programmer.RemoveBlock.Subscribe([&](Integer nBlockID, bool& fC) {
        asked.push_back(nBlockID);
        EXPECT_TRUE(fC); // without an answer, nothing is removed
        fC = fAnswer;
    });
    EXPECT_EQ(Edit([&](frmPOSProgrammer& form) {
                  Click(form, {7});
                  Send(form, " 30");
                  Click(form, {7});         // declined
                  form.cmdClean_Click(0);   // declined
                  form.cmdNewBlock_Click(); // another block wants the key
                  Click(form, {9});
                  form.TakeKey(7); // declined
                  EXPECT_EQ(Describe(form.PosData()), "7: 7 sends 30; 9: 9");
                  EXPECT_EQ(form.CurrBlock(), 9);
                  Click(form, {9}); // no sequence: no question
                  EXPECT_EQ(asked, (std::vector<Integer>{1, 1, 1}));
                  Click(form, {7}); // the block becomes the current one
                  EXPECT_EQ(form.CurrBlock(), 7);
                  Click(form, {2}); // the sequence stays with the block
                  EXPECT_EQ(Describe(form.PosData()), "2: 2 7 sends 30");
                  Click(form, {7});
                  fAnswer = false;
                  Click(form, {2});
              }),
              "");
    EXPECT_EQ(asked.size(), 4U);

    Edit([&](frmPOSProgrammer& form) { Click(form, {1, 2}); });
    const auto removeAll = [](frmPOSProgrammer& form) { form.cmdClean_Click(1); };
    EXPECT_EQ(Edit(removeAll), "1: 1 2"); // no answer
    const Subscription yes = programmer.RemoveAllBlocks.Subscribe(
        [](bool& fCancelRemoving) { fCancelRemoving = false; });
    EXPECT_EQ(Edit(removeAll), "");
}

TEST_F(POSProgrammerTest, TheSequenceIsEditedByTheHost) {
    Integer code = 0;
    bool fCancel = false;
    const Subscription editor = programmer.EditSequence.Subscribe(
        [&](Integer nPosCode, const std::string& sOutSeq, bool& fCancelEdit, std::string& sInSeq) {
            EXPECT_TRUE(fCancelEdit);
            EXPECT_EQ(sInSeq, sOutSeq);
            code = nPosCode;
            sInSeq = sOutSeq + " 31159";
            fCancelEdit = fCancel;
        });
    EXPECT_EQ(Edit([&](frmPOSProgrammer& form) {
                  form.cmdEdit_Click(); // no block to edit
                  EXPECT_EQ(code, 0);
                  Click(form, {46, 2});
                  form.cmdEdit_Click();
                  EXPECT_EQ(code, 112); // F1, the major key
                  EXPECT_EQ(form.lblCurrSeq.Caption, "A ");
                  EXPECT_EQ(form.lblRemaining.Caption, "29");
                  fCancel = true;
                  form.cmdEdit_Click();
              }),
              "2: 2 46 sends 31159");
    fCancel = false;
    Edit([](frmPOSProgrammer& form) {
        form.SetCurrBlock(2);
        for (int i = 0; i < 20; ++i)
            form.cmdEdit_Click();
        EXPECT_EQ(form.lblRemaining.Caption, "0");
    });
    EXPECT_EQ(keyboard.Block(2).Sequence().Length(), kPOSSequenceSize);
}

TEST_F(POSProgrammerTest, LabelsAndColours) {
    Edit([](frmPOSProgrammer& form) {
        for (Integer key = 1; key <= 12; ++key) {
            form.cmdNewBlock_Click();
            Click(form, {key});
        }
        // Once all colours are in use, they repeat.
        EXPECT_EQ(form.PosData().Block(10).ColorID(), 9);
        EXPECT_EQ(form.PosData().Block(11).ColorID(), 0);
        EXPECT_EQ(form.PosData().Block(12).BlockID(), 12);
        form.SetCurrBlock(3);
        form.cmdClean_Click(0);
        Click(form, {50}); // gets the values that are free
        EXPECT_EQ(form.PosData().Block(50).BlockID(), 3);
        EXPECT_EQ(form.PosData().Block(50).ColorID(), 2);

        form.cmdColor_Click(7);
        form.cmdColor_Click(10);
        EXPECT_TRUE(form.cmdColor[7].IsSelected);
        for (const char* text : {"4711", "", "-1", "1x", "32768", "99999999999"}) {
            form.txtBlockID.Text = text;
            form.txtBlockID_Change();
        }
        EXPECT_EQ(form.posDisplay.cmdPOS[50].Caption, "4711");
        EXPECT_EQ(form.lstBlocks.Items.back(), "4711: 50 (T)");
        EXPECT_EQ(form.lstBlocks.ListIndex, 11);
    });
    EXPECT_EQ(keyboard.Block(50).ColorID(), 7);
}

TEST_F(POSProgrammerTest, WorksOnACopyWithEveryBlockInItsSlot) {
    for (const Integer key : std::initializer_list<Integer>{
             40, 8, 60, 106}) // in the wrong slot; 106 is not in the module
        keyboard.Block(40).AddKey(key);
    keyboard.Block(40).Sequence().AddByte(9);
    keyboard.Block(60).AddKey(60); // also in the previous block
    user = [](frmPOSProgrammer& form) {
        EXPECT_TRUE(IsSound(form));
        EXPECT_EQ(Describe(form.PosData()), "8: 8 40 sends  9; 60: 60");
        Click(form, {1});
        form.cmdCancel_Click();
    };
    EXPECT_FALSE(programmer.ShowPosProgrammer(keyboard));
    EXPECT_EQ(keyboard.FindBlockForKey(1), 0);
    EXPECT_EQ(keyboard.Block(40).BlockSize(), 4);
    user = [](frmPOSProgrammer& form) { Click(form, {1}); }; // closed without OK or Cancel
    EXPECT_FALSE(programmer.ShowPosProgrammer(keyboard));
    user = [](frmPOSProgrammer&) { throw std::runtime_error("the host fails"); };
    EXPECT_THROW(programmer.ShowPosProgrammer(keyboard), std::runtime_error);
    EXPECT_EQ(Edit([](frmPOSProgrammer&) {}), "8: 8 40 sends  9; 60: 60");
}

TEST_F(POSProgrammerTest, AnOpenProgrammerIsNotOpenedAgain) {
    POSKeyboard other;
    int times = 0;
    EXPECT_EQ(Edit([&](frmPOSProgrammer& form) {
                  ASSERT_EQ(++times, 1) << "the form was opened again";
                  Click(form, {7});
                  EXPECT_FALSE(programmer.ShowPosProgrammer(other));
                  Click(form, {9});
              }),
              "7: 7 9");
    EXPECT_EQ(Describe(other), "");
}

} // namespace
} // namespace qx::test
