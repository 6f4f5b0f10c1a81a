#include "com/windows/Apartment.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace qx::com {
namespace {

// The system reuses the number of a thread that has ended; this one is never reused.
std::uint64_t ThisThread() {
    static std::atomic<std::uint64_t> last = 0;
    static constinit thread_local std::uint64_t number = 0;
    if (number == 0)
        number = ++last;
    return number;
}

// A reference on its way to the object's thread, where the hook is called.
struct HandedOver {
    IUnknown* object;
    std::uint64_t home;
    DWORD thread;
    HHOOK hook;
};

class Transfers {
public:
    // `hook` is called on the thread when it next retrieves a message. False if the thread has
    // ended.
    bool Add(IUnknown& object, std::uint64_t home, DWORD thread, HOOKPROC hook) {
        const std::lock_guard lock(m_mutex);
        m_all.push_back({&object, home, thread, nullptr});
        m_all.back().hook = SetWindowsHookExW(WH_GETMESSAGE, hook, nullptr, thread);
        if (m_all.back().hook != nullptr)
            return true;
        m_all.pop_back();
        return false;
    }
    // Removes and returns the references for the thread with this number.
    std::vector<HandedOver> Take(DWORD thread) {
        const std::lock_guard lock(m_mutex);
        const auto taken = std::ranges::stable_partition(
            m_all, [&](const HandedOver& transfer) { return transfer.thread != thread; });
        const std::vector<HandedOver> mine(taken.begin(), taken.end());
        m_all.erase(taken.begin(), taken.end());
        return mine;
    }

private:
    std::mutex m_mutex;
    std::vector<HandedOver> m_all;
};

Transfers& TheTransfers() {
    static auto* const transfers = new Transfers; // never destroyed, like the server's machine
    return *transfers;
}

LRESULT CALLBACK OnMessageTaken(int code, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = CallNextHookEx(nullptr, code, wParam, lParam);
    static_cast<void>(Guarded([] {
        for (const HandedOver& transfer : TheTransfers().Take(GetCurrentThreadId())) {
            UnhookWindowsHookEx(transfer.hook);
            if (transfer.home == ThisThread())
                transfer.object->Release();
        }
        return S_OK;
    }));
    return result;
}

} // namespace

Apartment::Apartment(IUnknown& object) : m_object(object), m_home(ThisThread()) {}

bool Apartment::IsHere() const {
    return m_home == ThisThread();
}

// A hook rather than a thread message: the loops of message boxes and menus drop messages without a
// window. A window per thread would be created even for objects that never leave their thread.
void Apartment::HandOver() {
    static_cast<void>(Guarded([&] {
        if (TheTransfers().Add(m_object, m_home, m_thread, OnMessageTaken))
            PostThreadMessageW(m_thread, WM_NULL, 0, 0);
        return S_OK;
    }));
}

} // namespace qx::com
