// The host's pending window messages, which a waiting control allows to be handled.
#pragma once

namespace qx {

class PendingMessages {
public:
    virtual ~PendingMessages() = default;

    // Handles the pending messages and returns. The default, for hosts without a message loop,
    // sleeps for a millisecond.
    virtual void Process();
};

} // namespace qx
