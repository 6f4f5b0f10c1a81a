// Apartment: the thread that an object belongs to (the one that created it) and the object's
// reference count.
//
// Any thread may add and release references. Calls from another thread without COM's marshalling
// are refused. A last reference released on another thread is handed to the object's own one,
// because windows, timers and sinks can only be released there; that thread releases it when it
// next retrieves a message. If the thread has ended, the object is kept until the process ends.
#pragma once

#include "com/windows/Com.h"

#include <atomic>
#include <cstdint>

namespace qx::com {

class Apartment {
public:
    // Starts with one reference, the caller's. The object outlives this.
    explicit Apartment(IUnknown& object);
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

    [[nodiscard]] bool IsHere() const;

    ULONG AddRef() { return ++m_references; }
    // Returns the number of references left. `end` destroys the object; code that it runs may add
    // and release references meanwhile.
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

    // Runs one call of the object, which may release the object.
    template <typename Body>
    [[nodiscard]] HRESULT Enter(Body body) {
        if (!IsHere())
            return RPC_E_WRONG_THREAD;
        const ComPtr<IUnknown> alive(&m_object);
        return Guarded(body);
    }
    // The same for a call with a result in `*out`, which is empty after a failure.
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
