// The machine's tick counter.
#pragma once

#include <cstdint>

namespace qx {

class TickCounter {
public:
    virtual ~TickCounter() = default;

    // Milliseconds since an arbitrary moment; wraps to 0 after 2^32 - 1. The default uses the
    // standard library's steady clock.
    [[nodiscard]] virtual std::uint32_t GetTickCount();
};

} // namespace qx
