// RefusingDriver: a driver that refuses every call; base class of drivers that support only some.
#pragma once

#include "qxcontrols/device/ConfigDriver.h"

namespace qx {

class RefusingDriver : public ConfigDriver {
public:
    // A failure as a status, and none as the position code of a key.
    static constexpr std::int32_t kRefused = -1;

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t name parameters override {                                                        \
        return Refuse arguments;                                                                   \
    }
#include "qxcontrols/device/DriverFunctions.def"

private:
    template <typename... Arguments>
    static std::int32_t Refuse(const Arguments&... /*ignored*/) {
        return kRefused;
    }
};

} // namespace qx
