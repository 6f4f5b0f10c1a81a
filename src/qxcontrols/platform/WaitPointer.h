// The wait (hourglass) pointer that a host shows while a control keeps it waiting.
#pragma once

namespace qx {

class WaitPointer {
public:
    virtual ~WaitPointer() = default;

    // Shown and restored in pairs. The default, for hosts without a pointer, does nothing.
    virtual void Show() {}
    virtual void Restore() {}
};

} // namespace qx
