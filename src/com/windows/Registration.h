// The server's keys in the registry.
#pragma once

#include "com/windows/Com.h"

namespace qx::com {

enum class Scope {
    Machine,
    MachineOrUser, // for the user if the process may not write for the machine
    User,
};

// Leaves nothing behind if it fails.
[[nodiscard]] HRESULT RegisterServer(Scope scope);

// Deletes every key that registering created, except those that the server of the other word size
// needs too; missing keys are not an error.
[[nodiscard]] HRESULT UnregisterServer(Scope scope);

} // namespace qx::com
