// The editors' windows: the user works in them while the host's call waits.

#include "com/windows/Editors.h"

namespace qx::test {
namespace {

std::wstring TextOf(HWND window) {
    wchar_t text[256] = {};
    GetWindowTextW(window, text, 256);
    return text;
}

// With a window of the host, which must be disabled while an editor is open.
class ComEditors : public ComClient {
protected:
    void SetUp() override { ASSERT_NE(SetActiveWindow(host.Window()), nullptr); }
    void TearDown() override {
        EXPECT_EQ(TheEditor(), nullptr);
        EXPECT_TRUE(host.Window() == nullptr || IsWindowEnabled(host.Window()));
    }

    // The sequence editor's result and returned sequence.
    std::pair<bool, std::wstring> Edit(const wchar_t* sequence, SHORT most) const {
        BSTR answer = SysAllocString(L"as it was");
        const bool isAccepted =
            Get(sequencer.Get(), L"ShowSequenceEditor",
                {Int(75), Text(sequence), Reference(VT_BSTR, &answer), Int(most)})
                .Flag();
        const std::wstring text = answer;
        SysFreeString(answer);
        return {isAccepted, text};
    }

    Form host;
    Services services;
    ComPtr<IDispatch> sequencer = NewSequencer(services);
};

TEST_F(ComEditors, ASequenceIsClickedTypedAndAccepted) {
    ASSERT_TRUE(AtlStarts());
    const auto control = host.Place("QXFreeProgKeys");
    services.HandTo(control.Get());
    Get(control.Get(), L"ReloadKeySettings");
    const auto keysOfHost = AccessibleOf(host.Child(L"QXControls.Keys"));
    const auto picksInHost = [&] { // like a screen reader; returns whether the key is then current
        VARIANT state;
        EXPECT_EQ(keysOfHost->accDoDefaultAction(LongInt(9)), S_OK);
        EXPECT_EQ(keysOfHost->get_accState(LongInt(9), &state), S_OK);
        return (V_I4(&state) & STATE_SYSTEM_PRESSED) != 0;
    };
    const User user({
        [&] {
            if (TheEditor() == nullptr)
                return false;
            EXPECT_FALSE(IsWindowEnabled(host.Window()));
            EXPECT_FALSE(picksInHost());
            EXPECT_EQ(Edit(L" 33", 5), std::pair(false, std::wstring(L"as it was"))); // it is open
            EXPECT_EQ(GetWindow(TheEditor(), GW_OWNER), host.Window());
            EXPECT_EQ(TextOf(TheEditor()), L"Edit a sequence");
            EXPECT_EQ(GetFocus(), EditorChild(L"QXControls.Keys"));
            return AccessibleOf(EditorChild(L"QXControls.Keys"))->accDoDefaultAction(LongInt(1)) ==
                   S_OK;
        },
        [] {
            EXPECT_EQ(TextOf(EditorChild(L"EDIT", 0)), L"X1 "); // the keys recorded so far
            const HWND typed = EditorChild(L"EDIT", 1);
            EXPECT_EQ(TextOf(typed), L"X1 ^X1");
            SetFocus(typed);
            SendMessageW(typed, EM_SETSEL, 0, -1);
            Type(typed, L"Nonsense");
            PostMessageW(typed, WM_KEYDOWN, VK_RETURN, 0);
            return true;
        },
        [] { // the error is shown, and the typed text is kept
            const HWND typed = EditorChild(L"EDIT", 1);
            if (IsWindowVisible(EditorChild(L"STATIC", 4)) == FALSE)
                return false;
            EXPECT_EQ(TextOf(typed), L"Nonsense");
            SendMessageW(typed, EM_SETSEL, 0, -1);
            Type(typed, L"CapsLock ^CapsLock");
            SendMessageW(EditorButton(L"OK"), BM_CLICK, 0, 0);
            return true;
        },
    });
    EXPECT_EQ(Edit(L"", 30), std::pair(true, std::wstring(L" 30158")));
    EXPECT_TRUE(picksInHost());
}

TEST_F(ComEditors, ClosingTheWindowAsksBeforeChangesAreLost) {
    const auto answer = [](int button) {
        return [button] {
            const HWND question = FindWindowW(L"#32770", L"Edit a sequence");
            if (question == nullptr)
                return false;
            EXPECT_FALSE(IsWindowEnabled(TheEditor()));
            SendMessageW(question, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                         reinterpret_cast<LPARAM>(GetDlgItem(question, button)));
            return true;
        };
    };
    const auto escape = [] {
        if (FindWindowW(L"#32770", nullptr) != nullptr || GetFocus() == nullptr)
            return false;
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 0);
        return true;
    };
    {
        const User user({
            [] {
                return TheEditor() != nullptr && AccessibleOf(EditorChild(L"QXControls.Keys"))
                                                         ->accDoDefaultAction(LongInt(40)) == S_OK;
            },
            escape,
            answer(IDNO),
            escape,
            answer(IDYES),
        });
        EXPECT_EQ(Edit(L" 30158", 30), std::pair(false, std::wstring(L"as it was")));
    }
    const User user({[&] { return TheEditor() != nullptr && escape(); }}); // nothing to lose
    EXPECT_EQ(Edit(L" 30158", 30), std::pair(false, std::wstring(L"as it was")));
}

TEST_F(ComEditors, AnEditorThatTheHostEndsIsCancelled) {
    const User user({[this] {
        if (TheEditor() == nullptr)
            return false;
        host.Clear(); // destroys the editor's window with its owner
        return true;
    }});
    EXPECT_EQ(Edit(L" 30158", 30), std::pair(false, std::wstring(L"as it was")));
}

TEST_F(ComEditors, AnEditorOpensBeforeAHostWithoutAnActiveWindow) {
    SetActiveWindow(nullptr);
    ASSERT_EQ(GetActiveWindow(), nullptr);
    const User user({[this] {
        if (TheEditor() == nullptr)
            return false;
        EXPECT_EQ(GetWindow(TheEditor(), GW_OWNER), host.Window());
        EXPECT_FALSE(IsWindowEnabled(host.Window()));
        PostMessageW(TheEditor(), WM_CLOSE, 0, 0);
        return true;
    }});
    EXPECT_EQ(Edit(L" 30158", 30), std::pair(false, std::wstring(L"as it was")));
}

TEST_F(ComEditors, AnEditorEndsWithTheThreadsMessages) {
    const User user({[] {
        if (TheEditor() != nullptr)
            PostQuitMessage(77);
        return TheEditor() != nullptr;
    }});
    EXPECT_EQ(Edit(L" 30158", 30), std::pair(false, std::wstring(L"as it was")));
    MSG quit{};
    EXPECT_TRUE(PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)); // for the host
    EXPECT_EQ(quit.wParam, 77U);
}

TEST_F(ComEditors, BlocksArePickedNumberedColouredAndAccepted) {
    const auto programmer = NewPosProgrammer(services);
    const auto data = NewObject(L"QXControls.POSKeyboard");
    const auto pick = [](int keyboard, LONG key) {
        EXPECT_EQ(AccessibleOf(EditorChild(L"QXControls.Keys", keyboard))
                      ->accDoDefaultAction(LongInt(key)),
                  S_OK);
    };
    const auto holdControl = [](bool isDown) {
        BYTE keys[256] = {};
        keys[VK_CONTROL] = isDown ? 0x80 : 0;
        SetKeyboardState(keys);
    };
    const User user({[&] {
        if (TheEditor() == nullptr)
            return false;
        pick(0, 17);
        pick(0, 2);
        pick(1, 4); // the colour's index
        const HWND number = EditorChild(L"EDIT", 0);
        SendMessageW(number, EM_SETSEL, 0, -1);
        Type(number, L"23");
        SendMessageW(EditorButton(L"Ne&w block"), BM_CLICK, 0, 0);
        pick(0, 40); // of a second block,
        pick(0, 2);  // which is merged into the first one
        holdControl(true);
        pick(0, 40); // which gets the key back
        holdControl(false);
        pick(0, 17); // and loses one
        holdControl(true);
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0);
        return true;
    }});
    EXPECT_TRUE(Get(programmer.Get(), L"ShowPosProgrammer", {Dispatch(data.Get())}).Flag());
    holdControl(false);
    EXPECT_EQ(Get(data.Get(), L"BlockNum").Integer(), 1);
    const auto block = PartOf(data.Get(), L"Block", {Int(2)});
    EXPECT_EQ(Get(block.Get(), L"BlockID").Integer(), 23);
    EXPECT_EQ(Get(block.Get(), L"ColorID").Integer(), 3);
    EXPECT_EQ(Get(block.Get(), L"BlockSize").Integer(), 2);
    EXPECT_TRUE(Get(block.Get(), L"HasKey", {Int(40)}).Flag());
}

} // namespace
} // namespace qx::test
