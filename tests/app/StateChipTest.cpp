// The chip that shows whether the keyboard holds the document, and the dots on changed keys.
#include "Desk.h"
#include "app/KeyboardState.h"

#include <QAccessible>

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

// The marked keys of the page's grid, once those of the wanted keys are.
std::set<int> Marked(Desk& desk, const char* grid, const std::set<int>& wanted) {
    auto* keys = desk.Find<views::KeyGrid>(grid);
    std::set<int> marked;
    (void)QTest::qWaitFor([&] {
        marked.clear();
        for (const views::KeyCap& cap : keys->Keys())
            if (keys->IsMarked(cap.index))
                marked.insert(cap.index);
        return marked == wanted;
    });
    return marked;
}

TEST(StateChip, ChangedKeysHaveADotUntilTheyAreWritten) {
    Desk desk;
    using Set = std::set<int>;
    desk.Page("freeProgKeys");
    desk.ClickKey("layoutDisplay", 75);
    desk.Click("key_31");
    EXPECT_EQ(Marked(desk, "layoutDisplay", {75}), Set({75}));
    auto* grid = desk.Find<views::KeyGrid>("layoutDisplay");
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(grid);
    QStringList changed;
    for (int i = 0; i < spoken->childCount(); ++i)
        if (spoken->child(i)->text(QAccessible::Description).contains("not yet written"))
            changed.append(spoken->child(i)->text(QAccessible::DebugDescription));
    EXPECT_EQ(changed, QStringList("cmdKey_75"));

    desk.Page("layeredFuncKeys");
    auto* tabs = desk.Find<QTabBar>("layers");
    desk.ShowLayer(2);
    desk.ClickKey("funcKeys", 1);
    desk.Click("key_31");
    EXPECT_EQ(Marked(desk, "funcKeys", {1}), Set({1}));
    EXPECT_TRUE(tabs->tabToolTip(2).contains("not yet written"));
    EXPECT_FALSE(tabs->tabToolTip(1).contains("not yet written"));
    desk.ShowLayer(1);
    EXPECT_EQ(Marked(desk, "funcKeys", {}), Set()) << "the key of another layer";

    desk.Page("pos");
    auto* pos = desk.Find<views::KeyGrid>("posDisplay");
    pos->Select({3, 4, 5});
    desk.Click("joinKeys");
    EXPECT_EQ(Marked(desk, "posDisplay", {3, 4, 5}), Set({3, 4, 5}));
    desk.Write();
    desk.Page("pos");
    EXPECT_EQ(Marked(desk, "posDisplay", {}), Set());
    pos->Select({5});
    desk.Click("splitKeys");
    EXPECT_EQ(Marked(desk, "posDisplay", {3, 4, 5}), Set({3, 4, 5})) << "in no block any more";
    desk.UndoAction().trigger();
    EXPECT_EQ(Marked(desk, "posDisplay", {}), Set());
    desk.workbench.Disconnect();
    desk.Page("freeProgKeys");
    EXPECT_EQ(Marked(desk, "layoutDisplay", {}), Set());
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
    EXPECT_TRUE(desk.ShowsState("Interrupted write: resolve…"));
    desk.workbench.Simulated()->FailCall(0, 0, false);
    setup::KeyboardChoice other;
    other.keyboard = desk.folder / "other.qxk";
    other.model = "magnet";
    desk.workbench.Connect(other);
    EXPECT_TRUE(desk.ShowsState("Not compared with the keyboard")) << "that was another keyboard";
}

// The text with which a button was painted last.
class PaintedText : public QObject {
public:
    explicit PaintedText(QToolButton& button) : QObject(&button), m_button(button) {
        button.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            text = m_button.text();
        return false;
    }
    QString text;

private:
    QToolButton& m_button;
};

TEST(StateChip, NamesTheLookForAnInterruptedWriteBeforeTheDriverIsCalled) {
    Desk desk;
    auto* chip = desk.Find<QToolButton>("stateChip");
    const PaintedText painted(*chip);
    const auto calls = [&] { return desk.workbench.Simulated()->Calls(); };
    std::vector<int> looks; // the driver's calls until then
    QObject::connect(desk.window->findChild<app::KeyboardState*>(), &app::KeyboardState::Looks,
                     chip, [&] {
                         EXPECT_EQ(painted.text, "Looking for an interrupted write…");
                         looks.push_back(calls());
                     });
    EXPECT_TRUE(desk.ShowsState("In sync"));
    desk.workbench.ReadKeyboard();
    EXPECT_TRUE(desk.ShowsState("In sync"));
    EXPECT_TRUE(looks.empty()) << "no write was interrupted";

    desk.Page("freeProgKeys");
    desk.ClickKey("layoutDisplay", 75);
    desk.Click("key_31");
    desk.recover = Desk::Ending::Later;
    desk.AtStep(host::Step::Writing, [&] { desk.workbench.Simulated()->StopTransferAfter(1); });
    desk.Write();
    desk.workbench.Simulated()->StopTransferAfter(-1);
    EXPECT_TRUE(desk.ShowsState("Interrupted write: resolve…"));
    ASSERT_FALSE(looks.empty());
    EXPECT_LT(looks.front(), calls());
}

TEST(StateChip, RemembersWhatAComparisonHasFound) {
    Desk desk;
    const auto reconnect = [&] {
        desk.workbench.Disconnect();
        EXPECT_TRUE(desk.ShowsState("No keyboard"));
        desk.Click("stateChip");
        EXPECT_TRUE(desk.ShowsState("Not compared with the keyboard"));
    };
    reconnect();
    desk.Click("stateChip");
    EXPECT_TRUE(desk.ShowsState("In sync"));

    desk.Page("freeProgKeys");
    desk.ClickKey("layoutDisplay", 75);
    desk.Click("key_31");
    reconnect();
    desk.InDialog([](QWidget& dialog) { dialog.close(); });
    desk.Click("stateChip");
    EXPECT_TRUE(desk.ShowsState("1 change not in the keyboard"));
    EXPECT_EQ(Marked(desk, "layoutDisplay", {75}), std::set<int>({75}));
    desk.UndoAction().trigger();
    EXPECT_TRUE(desk.ShowsState("In sync"));
}

} // namespace
} // namespace qx::test
