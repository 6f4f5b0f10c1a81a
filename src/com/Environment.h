// What new objects are made with: the machine, as the server finds it.
#pragma once

#include "qxcontrols/platform/Platform.h"

namespace qx {
class ConfigDriver;
class RegistryAccess;
} // namespace qx

namespace qx::com {

struct Environment {
    ConfigDriver& driver;
    RegistryAccess& registry;
    Platform platform;
};

} // namespace qx::com
