#include "com/windows/Machine.h"

#include "com/windows/Com.h"
#include "com/windows/FormWindow.h"
#include "com/windows/HostWindow.h"
#include "qxcontrols/common/Utf.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace qx::com {
namespace {

constexpr DWORD kMillisecondsToWait = 1;

// Timers without a window belong to the thread that set them; their messages carry only a number.
using TimersByNumber = std::map<UINT_PTR, FormTimer*>;
TimersByNumber& TimersOfThread() {
    static thread_local TimersByNumber timers;
    return timers;
}

void CALLBACK OnTimer(HWND, UINT, UINT_PTR number, DWORD) {
    const auto timer = TimersOfThread().find(number);
    if (timer != TimersOfThread().end())
        static_cast<void>(Guarded([&] {
            timer->second->Tick();
            return S_OK;
        }));
}

class WindowsFormTimer : public FormTimer {
public:
    ~WindowsFormTimer() override { Stop(); }

    void SetInterval(int milliseconds) override {
        FormTimer::SetInterval(milliseconds);
        Follow();
    }
    void SetEnabled(bool fEnabled) override {
        FormTimer::SetEnabled(fEnabled);
        Follow();
    }

private:
    void Follow() {
        Stop();
        if (!Enabled() || Interval() <= 0)
            return;
        m_number = SetTimer(nullptr, 0, static_cast<UINT>(Interval()), OnTimer);
        if (m_number != 0)
            TimersOfThread()[m_number] = this;
    }
    void Stop() {
        if (m_number == 0)
            return;
        KillTimer(nullptr, m_number);
        TimersOfThread().erase(m_number);
        m_number = 0;
    }

    UINT_PTR m_number = 0;
};

// How often the wait pointer was requested, and the pointer it replaced.
struct PointerState {
    int shown = 0;
    HCURSOR earlier = nullptr;
};
PointerState& PointerOfThread() {
    static thread_local PointerState state;
    return state;
}

} // namespace

std::uint32_t WindowsTickCounter::GetTickCount() {
    return ::GetTickCount();
}

Guid WindowsGuidCreator::CreateSafeGuid() {
    GUID created;
    if (FAILED(CoCreateGuid(&created)))
        throw std::runtime_error("the system cannot create identifiers");
    Guid guid{static_cast<std::uint32_t>(created.Data1), created.Data2, created.Data3, {}};
    std::ranges::copy(created.Data4, guid.rest.begin());
    return guid;
}

void WindowsMessageBoxes::Show(std::string_view sText) {
    const HWND owner = HostWindow();
    const UINT modality = owner == nullptr ? MB_TASKMODAL : MB_APPLMODAL;
    MessageBoxW(owner, Wide(Utf16FromUtf8(sText)).c_str(), L"QXControls", MB_OK | modality);
}

void WindowsWaitPointer::Show() {
    PointerState& state = PointerOfThread();
    if (state.shown++ == 0)
        state.earlier = SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_WAIT)));
}

void WindowsWaitPointer::Restore() {
    PointerState& state = PointerOfThread();
    if (state.shown > 0 && --state.shown == 0)
        SetCursor(state.earlier);
}

void WindowsPendingMessages::Process() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) { // meant for the host's loop, so it is posted again
            PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    MsgWaitForMultipleObjects(0, nullptr, FALSE, kMillisecondsToWait, QS_ALLINPUT);
}

void WindowsModalForms::ShowModal(frmSequencer& form) {
    FormWindow(FormTableOf(form)).Run();
}

void WindowsModalForms::ShowModal(frmPOSProgrammer& form) {
    FormWindow(FormTableOf(form)).Run();
}

std::unique_ptr<FormTimer> WindowsFormTimers::Create() {
    return std::make_unique<WindowsFormTimer>();
}

Machine::Machine() : m_environment{m_driver, m_registry, {}} {
    Platform& platform = m_environment.platform;
    platform.tickCounter = &m_tickCounter;
    platform.guidCreator = &m_guidCreator;
    platform.messageBoxes = &m_messageBoxes;
    platform.waitPointer = &m_waitPointer;
    platform.pendingMessages = &m_pendingMessages;
    platform.formTimers = &m_formTimers;
    platform.modalForms = &m_modalForms;
}

} // namespace qx::com
