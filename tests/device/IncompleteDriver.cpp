// All functions of a driver except two.

#include "qxcontrols/device/ConfigDriver.h"

#define QXCFG_ImageSave NotImageSave
#define QXCFG_GetPositionKey NotGetPositionKey
#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    extern "C" __attribute__((visibility("default"))) std::int32_t name parameters;                \
    std::int32_t name parameters {                                                                 \
        return qx::Ignore arguments;                                                               \
    }

namespace qx {
template <typename... Arguments>
std::int32_t Ignore(Arguments...) {
    return 0;
}
} // namespace qx

#include "qxcontrols/device/DriverFunctions.def"
