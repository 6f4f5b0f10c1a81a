// The host's pending window messages, which a waiting control lets through.
#pragma once

namespace qx {

class PendingMessages {
public:
    virtual ~PendingMessages() = default;

    // Handles what is pending and returns. The default, for hosts without a message loop, gives the
    // processor away for a millisecond.
    virtual void Process();
};

} // namespace qx
