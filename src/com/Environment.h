// The machine that new objects are created with, as the server provides it.
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
