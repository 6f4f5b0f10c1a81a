// The faces of the key controls: what the user does to real widgets arrives in the control and in
// the keyboard, and what the control shows can be seen and heard.
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/settings/QXProgSettings.h"
#include "support/BlockRoundTrip.h"
#include "views/QXFreeProgKeysView.h"
#include "views/QXLayeredFuncKeysView.h"
#include "views/QXLayoutDisplayView.h"
#include "views/QXPosView.h"
#include "views/SequenceLabel.h"

#include <QPushButton>
#include <QTabBar>
#include <QTest>

#include <functional>

namespace qx::views {
namespace {

using test::Bytes;
using test::SetCodes;
using test::TestKeyboard;

// A view on the screen, and its children by name.
class Screen {
public:
    explicit Screen(QWidget& view) : m_view(view) {
        view.resize(900, 500);
        view.show();
    }
    template <typename Widget = QWidget>
    [[nodiscard]] Widget* Child(const char* name) const {
        auto* child = m_view.findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(child, nullptr) << name;
        return child;
    }
    void Click(const char* name) const { QTest::mouseClick(Child(name), Qt::LeftButton); }
    void ClickKey(const char* gridName, int key) const {
        auto* grid = Child<KeyGrid>(gridName);
        QTest::mouseClick(grid, Qt::LeftButton, {}, grid->KeyRect(key).center());
    }
    [[nodiscard]] const KeyCap& Cap(const char* gridName, int key) const {
        for (const KeyCap& cap : Child<KeyGrid>(gridName)->Keys())
            if (cap.index == key)
                return cap;
        ADD_FAILURE() << "no key " << key;
        static const KeyCap kNone;
        return kNone;
    }

private:
    QWidget& m_view;
};

class KeyViewsTest : public testing::Test {
protected:
    KeyViewsTest() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl")) << layout.Error();
    }
    void Connect(ModuleControl& control) {
        control.SetKeyboard(&keyboard.access);
        control.SetPrefSource(&preferences);
        control.SetLayoutSource(&layout);
        control.ReloadKeySettings();
    }

    TestKeyboard keyboard{{{MODULE_FREEPROGRAMMABLE_KEYS, 4096},
                           {MODULE_LAYERED_FUNCKEYS, 16384},
                           {MODULE_GUID, 60000},
                           {MODULE_POS, 8192}}};
    QXKeyboardLayoutData layout;
    MemoryRegistry registry;
    QXProgSettings preferences{registry};
};

TEST_F(KeyViewsTest, AFreeKeyIsPickedEditedAndCleared) {
    QXFreeProgKeys control(keyboard.Services());
    Connect(control);
    QXFreeProgKeysView view(control);
    const Screen screen(view);
    const Subscription edits = control.EditSequence.Subscribe(
        [](Integer, const std::string&, bool&, std::string& sInSeq) { sInSeq = " 31159"; });
    const Subscription advances = control.AdvanceEdit.Subscribe([](bool& fEdit) { fEdit = true; });

    std::vector<Integer> refused;
    const Subscription refusals =
        control.KeyNoEditable.Subscribe([&](Integer key) { refused.push_back(key); });
    screen.ClickKey("layoutDisplay", 30); // CapsLock, which cannot be programmed
    screen.Click("cmdEdit_0");
    EXPECT_EQ(refused, std::vector<Integer>{30});
    screen.ClickKey("layoutDisplay", 75); // Ins, the first that can
    EXPECT_EQ(control.CurrentKey(), 75);
    screen.Click("cmdEdit_0");
    keyboard.Download(control);
    EXPECT_TRUE(keyboard.Holds(MODULE_FREEPROGRAMMABLE_KEYS, Bytes("1F 9F 00*30  00*32")));
    EXPECT_EQ(screen.Child<QLabel>("lblCurrSeq")->text().toStdString(), "A ");
    screen.Click("chkShowDetails");
    EXPECT_EQ(screen.Child<QLabel>("lblCurrSeq")->text().toStdString(), "A ^A ");

    EXPECT_EQ(screen.Cap("layoutDisplay", 75).name.toStdString(),
              "Key 75 (Ins), programmed: A, current key");
    EXPECT_TRUE(screen.Cap("layoutDisplay", 75).toolTip.contains(QStringLiteral("Insert key\nA")));
    EXPECT_EQ(screen.Cap("layoutDisplay", 76).name.toStdString(), "Key 76 (Del), not programmed");
    EXPECT_EQ(screen.Cap("layoutDisplay", 30).state, KeyState::Unused);
    EXPECT_EQ(screen.Cap("layoutDisplay", 30).name.toStdString(),
              "Key 30 (CapsLock), cannot be programmed");

    // The label accepts letters, but not clicks or the keys that move the focus.
    screen.Click("cmdEdit_1");
    EXPECT_EQ(control.Sequences().Key(75).Length(), 0);
    control.SetSequenceForCurrKey("Sends:");
    control.Translate();
    EXPECT_EQ(screen.Child("lblCurrSeq")->accessibleName().toStdString(), "Sends: No keys");
    screen.Click("lblCurrSeq");
    QTest::keyClick(screen.Child("lblCurrSeq"), Qt::Key_Tab);
    QTest::keyClick(screen.Child("lblCurrSeq"), Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(control.Sequences().Key(75).Length(), 0);
    QTest::keyClick(screen.Child("lblCurrSeq"), Qt::Key_A);
    EXPECT_EQ(control.Sequences().Key(75).Length(), 2);
    EXPECT_EQ(screen.Child("lblCurrSeq")->accessibleName().toStdString(), "Sends: A ^A");
    screen.Click("cmdEdit_2");
    EXPECT_EQ(control.Sequences().Key(75).Length(), 0);
}

// The buttons act on the key with the ring.
TEST_F(KeyViewsTest, TheKeyWithTheFocusIsTheOneThatIsCleared) {
    QXFreeProgKeys control(keyboard.Services());
    Connect(control);
    for (const Long key : {112, 113, 114})
        SetCodes(control.Sequences().Key(key), {static_cast<Byte>(key)});
    QXFreeProgKeysView view(control);
    const Screen screen(view);
    view.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&view));
    auto* grid = screen.Child<KeyGrid>("layoutDisplay");
    screen.ClickKey("layoutDisplay", 112);
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Right);
    EXPECT_EQ(grid->FocusKey(), 113);
    EXPECT_TRUE(screen.Cap("layoutDisplay", 113).isCurrent);
    screen.Click("cmdEdit_1");
    EXPECT_EQ(control.Sequences().Key(112).Length(), 1);
    EXPECT_EQ(control.Sequences().Key(113).Length(), 0);

    // A press that ends elsewhere changes neither; selecting a key in another way moves the ring,
    // but not the keyboard focus.
    QTest::mousePress(grid, Qt::LeftButton, {}, grid->KeyRect(114).center());
    QTest::mouseRelease(grid, Qt::LeftButton, {}, grid->KeyRect(115).center());
    EXPECT_EQ(grid->FocusKey(), 113);
    screen.Child("cmdEdit_0")->setFocus();
    control.layoutDisplay.cmdKey_Click(114);
    EXPECT_EQ(grid->FocusKey(), 114);
    EXPECT_FALSE(grid->hasFocus());
    screen.Click("cmdEdit_1");
    EXPECT_EQ(control.Sequences().Key(114).Length(), 0);
    EXPECT_EQ(control.Sequences().Key(112).Length(), 1);
}

TEST_F(KeyViewsTest, TheDisplayAndTheGridHaveOneFocus) {
    QXLayoutDisplay display;
    display.SetLayoutSource(&layout);
    display.SetDisplayKeyType(DISPLAY_PROG);
    display.SetCurrProgKey(30);
    display.ReloadKeysSettings(KeyboardSequences());
    QWidget window;
    QXLayoutDisplayView view(display, &window);
    QLineEdit other(&window);
    view.resize(900, 400);
    const Screen screen(window);
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    display.SelectKey(16); // Tab
    EXPECT_EQ(view.Grid()->FocusKey(), 16);
    QTest::keyClick(view.Grid(), Qt::Key_Right);
    EXPECT_EQ(display.SelectedKey(), 17);
    for (int time = 0; time < 2; ++time) { // every time, also when the key has the ring already
        other.setFocus();
        display.SelectKey(16);
        EXPECT_EQ(view.Grid()->FocusKey(), 16);
        EXPECT_TRUE(view.Grid()->hasFocus());
    }

    // Redrawing, and a key that the keyboard lacks, take the focus from nobody.
    other.setFocus();
    display.ReloadKeysSettings(KeyboardSequences());
    display.SelectKey(0);
    display.ReloadKeysSettings(KeyboardSequences());
    EXPECT_TRUE(other.hasFocus());
    EXPECT_EQ(view.Grid()->FocusKey(), 16);

    std::vector<Long> clicked;
    const Subscription clicks =
        display.OnKeyClicked.Subscribe([&](Long key) { clicked.push_back(key); });
    QTest::keyClick(view.Grid(), Qt::Key_Space);
    screen.ClickKey("layoutDisplay", 128); // cannot be pressed by a sequence
    EXPECT_EQ(clicked, std::vector<Long>{16});
    EXPECT_TRUE(screen.Cap("layoutDisplay", 30).isCurrent);
    EXPECT_EQ(screen.Cap("layoutDisplay", 16).state, KeyState::Empty);
    EXPECT_EQ(screen.Cap("layoutDisplay", 128).state, KeyState::Unused);
    EXPECT_EQ(screen.Cap("layoutDisplay", 128).name.toStdString(),
              "Key 128 (X2), cannot be recorded");
    EXPECT_TRUE(screen.Cap("layoutDisplay", 128).toolTip.contains(QStringLiteral("key 128,")));
    EXPECT_FALSE(screen.Cap("layoutDisplay", 127).toolTip.contains(QStringLiteral("recorded")));

    ASSERT_TRUE(layout.OpenLayoutByName("german.qxl"));
    display.ReloadKeysSettings(KeyboardSequences());
    EXPECT_EQ(screen.Cap("layoutDisplay", 1).legend, QStringLiteral("\u25CC"));
    EXPECT_EQ(screen.Cap("layoutDisplay", 1).name.toStdString(), "Key 1 (^), dead key");
    EXPECT_TRUE(screen.Cap("layoutDisplay", 2).legend.isEmpty());
    EXPECT_FALSE(view.Grid()->HasKey(29)); // has no place of its own there
    EXPECT_TRUE(view.Grid()->HasKey(42));
}

TEST_F(KeyViewsTest, LayeredKeysAreReachedThroughTheirLayers) {
    QXLayeredFuncKeys control(keyboard.Services());
    Connect(control);
    QXLayeredFuncKeysView view(control);
    const Screen screen(view);
    const Subscription edits = control.EditLayeredFuncKey.Subscribe(
        [](const std::string&, bool& fCancelEdit, std::string& sNewSeq) {
            fCancelEdit = false;
            sNewSeq = " 31159";
        });
    EXPECT_FALSE(screen.Child("txtSymbolDesc")->isEnabled()); // no key is picked

    auto* layers = screen.Child<QTabBar>("layers");
    EXPECT_EQ(layers->count(), 10);
    QTest::mouseClick(layers, Qt::LeftButton, {}, layers->tabRect(2).center());
    EXPECT_EQ(control.CurrentLayer(), 2);
    control.cmdLayer_Click(1); // the host shows another
    EXPECT_EQ(layers->currentIndex(), 1);
    QTest::keyClick(layers, Qt::Key_Right);
    EXPECT_EQ(control.CurrentLayer(), 2);

    screen.ClickKey("funcKeys", 23);
    EXPECT_EQ(control.CurrentKey(), 23);
    QTest::keyClicks(screen.Child("txtSymbolDesc"), QStringLiteral("Tea"));
    screen.Click("cmdEdit_0");
    keyboard.Download(control);
    EXPECT_TRUE(keyboard.Holds(MODULE_LAYERED_FUNCKEYS, Bytes("1F 9F 00"), (2 * 24 + 23) * 128));
    EXPECT_EQ(control.Layer(2).GetKeyDesc(23), "Tea");
    EXPECT_EQ(layers->tabText(2).toStdString(), "2 (1)");
    EXPECT_EQ(layers->tabText(3).toStdString(), "3");
    const KeyCap& cap = screen.Cap("funcKeys", 23);
    EXPECT_EQ(cap.caption.toStdString(), "Tea");
    EXPECT_EQ(cap.legend.toStdString(), "F24");
    EXPECT_EQ(cap.name.toStdString(), "F24, Tea, programmed: A, current key");

    auto* grid = screen.Child<KeyGrid>("funcKeys");
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Up); // arrows take the current key along
    EXPECT_EQ(control.CurrentKey(), 11);
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(control.CurrentKey(), 23);

    // Writing in the middle of a description does not move the cursor to its end.
    auto* description = screen.Child<QLineEdit>("txtSymbolDesc");
    description->setCursorPosition(1);
    QTest::keyClicks(description, QStringLiteral("xy"));
    EXPECT_EQ(control.Layer(2).GetKeyDesc(23), "Txyea");

    screen.Click("cmdEdit_1");
    EXPECT_EQ(screen.Cap("funcKeys", 23).state, KeyState::Empty);
    QTest::mouseClick(layers, Qt::LeftButton, {}, layers->tabRect(3).center());
    EXPECT_EQ(screen.Cap("funcKeys", 23).caption.toStdString(), "F24");
}

TEST_F(KeyViewsTest, PosKeysShowTheirBlocks) {
    QXPos control(keyboard.Services());
    Connect(control);
    QXPosView view(control);
    const Screen screen(view);
    EXPECT_EQ(screen.Child<KeyGrid>("posDisplay")->Keys().size(), 105U);

    const Subscription edits = control.POSEditorRequested.Subscribe([&](bool& fCancelEdit) {
        POSBlock& block = control.PosData().Block(46);
        block.SetBlockID(7);
        block.AddKey(46);
        block.AddKey(105);
        SetCodes(block.Sequence(), {31});
        fCancelEdit = false;
    });
    screen.Click("cmdEdit");
    EXPECT_EQ(screen.Child<QLabel>("lblBlockNum")->text().toStdString(), "1");
    EXPECT_EQ(screen.Cap("posDisplay", 46).caption.toStdString(), "A\u2193");
    EXPECT_EQ(screen.Cap("posDisplay", 46).group, screen.Cap("posDisplay", 105).group);
    EXPECT_EQ(screen.Cap("posDisplay", 46).name.toStdString(), "Key 46 (Q), block 7, sends: A");
    EXPECT_EQ(screen.Cap("posDisplay", 105).state, KeyState::Programmed);
    EXPECT_EQ(screen.Cap("posDisplay", 1).name.toStdString(), "Key 1 (Esc), in no block");
    keyboard.Download(control);
    EXPECT_TRUE(keyboard.Holds(MODULE_POS, Bytes("01 1F 00*30"), 45 * 32));
    EXPECT_TRUE(keyboard.Holds(MODULE_POS, Bytes("01 00*31"), 104 * 32));

    std::vector<Integer> clicked;
    const Subscription clicks =
        control.posDisplay.KeyClicked.Subscribe([&](Integer key) { clicked.push_back(key); });
    screen.ClickKey("posDisplay", 105);
    QTest::keyClick(screen.Child("posDisplay"), Qt::Key_Up);
    QTest::keyClick(screen.Child("posDisplay"), Qt::Key_Return);
    EXPECT_EQ(clicked, (std::vector<Integer>{105, 90}));
    EXPECT_EQ(control.posDisplay.Focus(), 90);

    // The host moves the focus every time that it asks for it; painting leaves it.
    view.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&view));
    auto* grid = screen.Child<KeyGrid>("posDisplay");
    auto* button = screen.Child("cmdEdit");
    for (const auto& move : std::initializer_list<std::function<void()>>{
             [&] { control.posDisplay.SetCursor(90); },
             [&] { control.posDisplay.SetAsCurrentCaption(90, "12", ""); },
             [&] { control.posDisplay.SetAsCurrentCaption(90, "12", ""); }}) {
        button->setFocus();
        move();
        EXPECT_TRUE(grid->hasFocus());
        EXPECT_EQ(grid->FocusKey(), 90);
    }
    button->setFocus();
    control.posDisplay.PaintTogether([&] { control.posDisplay.SetAsCurrentCaption(91, "13", ""); });
    control.posDisplay.SetKeyCaption(92, "14", "");
    EXPECT_TRUE(button->hasFocus());
    EXPECT_EQ(control.posDisplay.Focus(), 90);
    EXPECT_EQ(screen.Cap("posDisplay", 91).textScale / screen.Cap("posDisplay", 92).textScale,
              10.0 / 8);

    // Keys that the module lacks are there once the host has painted them.
    control.posDisplay.SetKeyCaption(106, "106", "");
    control.posDisplay.SetKeyColor(150, 0x00112233);
    EXPECT_EQ(grid->Keys().size(), 107U);
    EXPECT_EQ(screen.Cap("posDisplay", 106).name.toStdString(), "Key 106, block 106");
    screen.ClickKey("posDisplay", 150);
    EXPECT_EQ(clicked.back(), 150);

    const Subscription removes =
        control.RemoveAllBlocks.Subscribe([](bool& fCancel) { fCancel = false; });
    screen.Click("cmdCleanAll");
    EXPECT_EQ(control.PosData().BlockNum(), 0);
    EXPECT_EQ(screen.Cap("posDisplay", 46).state, KeyState::Unused);
}

TEST_F(KeyViewsTest, ColoursFollowThePreferencesAndThePalette) {
    QXFreeProgKeys control(keyboard.Services());
    Connect(control);
    QXFreeProgKeysView view(control);
    const Screen screen(view);
    preferences.SetColorEmpty(0x00112233);
    control.ReloadColor();
    EXPECT_EQ(screen.Cap("layoutDisplay", 75).color, QColor(0x33, 0x22, 0x11));

    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Button, QColor(40, 41, 42));
    QApplication::setPalette(dark);
    QApplication::processEvents();
    EXPECT_EQ(screen.Cap("layoutDisplay", 30).color, QColor(40, 41, 42)); // the face of buttons
    QApplication::setPalette(before);
}

} // namespace
} // namespace qx::views
