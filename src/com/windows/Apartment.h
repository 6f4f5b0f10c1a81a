// Apartment: the thread that an object belongs to, which is the one that made it, and the
// references to the object.
//
// Any thread may count references. Calls that come from another thread without COM's marshalling
// are refused. A last reference that another thread gives back is handed to the object's own one,
// since windows, timers and sinks can be released there alone; that thread releases it when it next
// takes a message. Once the thread has ended, the object is kept until the process ends.
#pragma once

#include "com/windows/Com.h"

#include <atomic>
#include <cstdint>

namespace qx::com {

class Apartment {
public:
    // Counted once, for the caller. The object outlives this.
    explicit Apartment(IUnknown& object);
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

    [[nodiscard]] bool IsHere() const;

    ULONG AddRef() { return ++m_references; }
    // The references that are left. `end` destroys the object; what ends with it may count it
    // again meanwhile.
    template <typename End>
    ULONG Release(End end) {
        ULONG count = m_references;
        while (count > 1)
            if (m_references.compare_exchange_weak(count, count - 1))
                return count - 1;
        if (IsHere())
            end();
        else
            HandOver();
        return 0;
    }

    // What a call of the object does, which may release the object.
    template <typename Body>
    [[nodiscard]] HRESULT Enter(Body body) {
        if (!IsHere())
            return RPC_E_WRONG_THREAD;
        const ComPtr<IUnknown> alive(&m_object);
        return Guarded(body);
    }
    // The same for a call that answers in `*out`, which stays empty when it fails.
    template <typename T, typename Body>
    [[nodiscard]] HRESULT Enter(T* out, Body body) {
        if (out == nullptr)
            return E_POINTER;
        *out = {};
        return Enter(body);
    }

private:
    void HandOver();

    IUnknown& m_object;
    const std::uint64_t m_home;
    const DWORD m_thread = GetCurrentThreadId();
    std::atomic<ULONG> m_references = 1;
};

} // namespace qx::com
