#include "driverhost/PostingLibrary.h"

#include <atomic>
#include <future>
#include <stdexcept>
#include <thread>

#include <windows.h>

namespace qx::driverhost {

namespace {

constexpr const wchar_t* kClass = L"QXControls.Progress";

} // namespace

// A message-only window, with a thread that reads its messages.
class PostingLibrary::Window {
public:
    explicit Window(MessagePoster post)
        : m_post(post), m_flush(RegisterWindowMessageW(kClass)),
          m_flushed(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
        std::promise<HWND> made;
        std::future<HWND> window = made.get_future();
        m_thread = std::thread([this, &made] { Run(made); });
        m_window = window.get();
    }
    ~Window() {
        PostMessageW(m_window, WM_CLOSE, 0, 0);
        m_thread.join();
        CloseHandle(m_flushed);
    }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    void StandFor(std::int32_t hWindow, std::int32_t lMsg) {
        m_hWindow = hWindow;
        m_message = static_cast<UINT>(lMsg);
    }
    // Window handles have 32 significant bits, even on 64-bit systems.
    [[nodiscard]] std::int32_t Handle() const {
        return static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(m_window));
    }
    void Flush() {
        if (m_window != nullptr && PostMessageW(m_window, m_flush, 0, 0) != 0)
            WaitForSingleObject(m_flushed, INFINITE);
    }

private:
    void Run(std::promise<HWND>& made) {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = &Procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = kClass;
        RegisterClassW(&windowClass); // fails after the first time, which is harmless
        const HWND window = CreateWindowExW(0, kClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                            windowClass.hInstance, nullptr);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        made.set_value(window);
        MSG message{};
        while (window != nullptr && GetMessageW(&message, nullptr, 0, 0) > 0)
            DispatchMessageW(&message);
    }
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* const self = reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == WM_DESTROY)
            PostQuitMessage(0);
        else if (self != nullptr && message == self->m_flush)
            SetEvent(self->m_flushed);
        else if (self != nullptr && message == self->m_message)
            self->m_post(self->m_hWindow, static_cast<std::int32_t>(message),
                         static_cast<std::int32_t>(wParam), static_cast<std::int32_t>(lParam));
        else
            return DefWindowProcW(window, message, wParam, lParam);
        return 0;
    }

    MessagePoster m_post;
    UINT m_flush;
    HANDLE m_flushed;
    std::atomic<std::int32_t> m_hWindow = 0;
    std::atomic<UINT> m_message = WM_NULL;
    HWND m_window = nullptr;
    std::thread m_thread;
};

PostingLibrary::PostingLibrary(const std::string& file, MessagePoster post)
    : DriverLibrary(file), m_post(post) {}

PostingLibrary::~PostingLibrary() = default;

std::int32_t PostingLibrary::QXCFG_TransferNotification(std::int32_t hWindow, std::int32_t lMsg,
                                                        std::int32_t lWhat) {
    // A library that accepts a posting function needs no window.
    if (hWindow == 0 || Find<void (*)()>("QXSIM_SetMessagePoster") != nullptr)
        return DriverLibrary::QXCFG_TransferNotification(hWindow, lMsg, lWhat);
    if (!m_window)
        m_window = std::make_unique<Window>(m_post);
    m_window->StandFor(hWindow, lMsg);
    return DriverLibrary::QXCFG_TransferNotification(m_window->Handle(), lMsg, lWhat);
}

void PostingLibrary::Flush() {
    if (m_window)
        m_window->Flush();
}

} // namespace qx::driverhost
