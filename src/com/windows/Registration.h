// The server's keys in the registry.
#pragma once

#include "com/windows/Com.h"

namespace qx::com {

enum class Scope {
    Machine,
    MachineOrUser, // for the user when the process may not write for the machine
    User,
};

// Leaves nothing behind when it fails.
[[nodiscard]] HRESULT RegisterServer(Scope scope);

// Deletes every key that registering made, except those that the server of the other word size
// needs as well; keys that are not there are no error.
[[nodiscard]] HRESULT UnregisterServer(Scope scope);

} // namespace qx::com
