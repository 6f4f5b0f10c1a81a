// The chip that shows whether the keyboard holds the document.
#include "Desk.h"

namespace qx::test {
namespace {

TEST(StateChip, CountsTheChangesThatAreNotInTheKeyboard) {
    Desk desk;
    EXPECT_TRUE(desk.ShowsState("In sync"));
    desk.Page("freeProgKeys");
    desk.ClickKey("layoutDisplay", 75);
    desk.Click("key_31");
    EXPECT_TRUE(desk.ShowsState("1 change not in the keyboard"));
    desk.ClickKey("layoutDisplay", 76);
    desk.Click("key_31");
    EXPECT_TRUE(desk.ShowsState("2 changes not in the keyboard"));
    desk.UndoAction().trigger();
    EXPECT_TRUE(desk.ShowsState("1 change not in the keyboard"));

    desk.InDialog([&](QWidget& dialog) { Desk::ClickIn(dialog, "cmdWrite"); });
    desk.Click("stateChip");
    EXPECT_TRUE(desk.ShowsState("In sync"));
    desk.UndoAction().trigger();
    EXPECT_TRUE(desk.ShowsState("1 change not in the keyboard"))
        << "what was written is what counts";
    desk.UndoAction().trigger();

    desk.workbench.NewDocument();
    desk.workbench.OpenUnsaved(desk.workbench.Document());
    EXPECT_TRUE(desk.ShowsState("1 change not in the keyboard")) << "of another document, too";
}

TEST(StateChip, ShowsWhatIsNotKnownAndLeadsToARemedy) {
    Desk desk;
    desk.workbench.Disconnect();
    EXPECT_TRUE(desk.ShowsState("No keyboard"));
    desk.Click("stateChip");
    EXPECT_TRUE(desk.workbench.IsConnected());
    EXPECT_TRUE(desk.ShowsState("Not compared with the keyboard"));
    desk.workbench.ReadKeyboard();
    EXPECT_TRUE(desk.ShowsState("In sync"));

    desk.Page("freeProgKeys");
    desk.ClickKey("layoutDisplay", 75);
    desk.Click("key_31");
    desk.AtStep(host::Step::Writing, [&] { // simulates unplugging it
        desk.workbench.Simulated()->FailCall(1, 77, true);
    });
    desk.Write();
    EXPECT_TRUE(desk.ShowsState("Interrupted write: settle…"));
    desk.workbench.Simulated()->FailCall(0, 0, false);
    setup::KeyboardChoice other;
    other.keyboard = desk.folder / "other.qxk";
    other.model = "magnet";
    desk.workbench.Connect(other);
    EXPECT_TRUE(desk.ShowsState("Not compared with the keyboard")) << "that was another keyboard";
}

} // namespace
} // namespace qx::test
