// The editors' windows, and a user who works in them while the host's call waits.
#pragma once

#include "com/windows/Form.h"

#include <functional>
#include <utility>
#include <vector>

namespace qx::test {

inline HWND TheEditor() { // null if none is open
    return FindWindowW(L"QXControls.Form", nullptr);
}

// The n-th child of the class, from 0; null if there are fewer.
inline HWND EditorChild(const wchar_t* windowClass, int number = 0) {
    HWND child = nullptr;
    do
        child = FindWindowExW(TheEditor(), child, windowClass, nullptr);
    while (child != nullptr && number-- > 0);
    return child;
}

inline HWND EditorButton(const wchar_t* text) {
    return FindWindowExW(TheEditor(), nullptr, L"BUTTON", text);
}

// Runs its steps in order as messages are handled. A step is retried until it is done; a user who
// is stuck ends the thread's message loops, so that no test hangs.
class User {
public:
    using Step = std::function<bool()>; // returns true when done

    explicit User(std::vector<Step> steps) : m_steps(std::move(steps)) {
        s_user = this;
        m_timer = SetTimer(nullptr, 0, 20, OnTimer);
    }
    User(const User&) = delete;
    User& operator=(const User&) = delete;
    ~User() {
        KillTimer(nullptr, m_timer);
        s_user = nullptr;
        MSG quit;
        while (PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
        }
        EXPECT_EQ(m_done, m_steps.size()) << "number of steps completed";
    }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
        if (s_user == nullptr || s_user->m_isActing || s_user->m_done == s_user->m_steps.size())
            return;
        constexpr int kPatience = 500;
        s_user->m_isActing = true;
        if (s_user->m_steps[s_user->m_done]())
            ++s_user->m_done;
        else if (++s_user->m_waits > kPatience)
            PostQuitMessage(1);
        s_user->m_isActing = false;
    }

    inline static User* s_user = nullptr;
    std::vector<Step> m_steps;
    std::size_t m_done = 0;
    int m_waits = 0;
    bool m_isActing = false;
    UINT_PTR m_timer = 0;
};

inline ComPtr<IDispatch> NewSequencer(const Services& services) {
    auto sequencer = NewObject(L"QXControls.QXSequencer");
    services.HandTo(sequencer.Get());
    Put(sequencer.Get(), L"EditorCaption", Text(L"Edit a sequence"));
    Put(sequencer.Get(), L"SequenceCaption", Text(L"Sequence"));
    Put(sequencer.Get(), L"SequenceSizeMessage", Text(L"The sequence is full."));
    Put(sequencer.Get(), L"ShowDetails", Text(L"Show released keys"));
    PutCaption(sequencer.Get(), L"ButtonOK", L"OK");
    PutCaption(sequencer.Get(), L"ButtonCancel", L"Cancel");
    PutCaption(sequencer.Get(), L"ButtonCleanLast", L"Remove &last");
    PutCaption(sequencer.Get(), L"ButtonCleanAll", L"&Remove all");
    return sequencer;
}

inline ComPtr<IDispatch> NewPosProgrammer(const Services& services) {
    auto programmer = NewObject(L"QXControls.QXPOSProgrammer");
    Put(programmer.Get(), L"LayoutSource", Dispatch(services.layout.Get()));
    Put(programmer.Get(), L"PrefSource", Dispatch(services.settings.Get()));
    Put(programmer.Get(), L"ProgrammerCaption", Text(L"Edit the blocks"));
    Put(programmer.Get(), L"NumBlocksCaption", Text(L"&Blocks:"));
    Put(programmer.Get(), L"BlockIDCaption", Text(L"&Number:"));
    Put(programmer.Get(), L"KeysCaption", Text(L"Keys:"));
    Put(programmer.Get(), L"ColorCaption", Text(L"Colour:"));
    Put(programmer.Get(), L"SequenceCaption", Text(L"Sequence:"));
    PutCaption(programmer.Get(), L"ButtonOK", L"OK");
    PutCaption(programmer.Get(), L"ButtonCancel", L"Cancel");
    PutCaption(programmer.Get(), L"ButtonNewBlock", L"Ne&w block");
    PutCaption(programmer.Get(), L"ButtonEdit", L"&Edit...");
    PutCaption(programmer.Get(), L"ButtonClean", L"&Remove");
    PutCaption(programmer.Get(), L"ButtonCleanAll", L"Remove &all");
    return programmer;
}

} // namespace qx::test
