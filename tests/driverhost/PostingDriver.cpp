// A typical driver for Windows: it does not know this project and posts its progress (0, 50 and 100
// percent) to the given window.

#include "qxcontrols/device/ConfigDriver.h"

#include <initializer_list>

#include <windows.h>

namespace {

HWND theWindow = nullptr;
UINT theMessage = 0;
WPARAM theWhat = 0;

template <typename... Arguments>
std::int32_t Ignore(Arguments...) {
    return 0;
}

} // namespace

#define QXCFG_TransferNotification TransferNotificationOfAll
#define QXCFG_ImageLoad ImageLoadOfAll
#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    extern "C" __attribute__((dllexport)) std::int32_t QX_DRIVER_CALL name parameters {            \
        return Ignore arguments;                                                                   \
    }
#include "qxcontrols/device/DriverFunctions.def"
#undef QXCFG_TransferNotification
#undef QXCFG_ImageLoad

extern "C" __attribute__((dllexport)) std::int32_t QX_DRIVER_CALL
QXCFG_TransferNotification(std::int32_t hWindow, std::int32_t lMsg, std::int32_t lWhat) {
    theWindow = reinterpret_cast<HWND>(static_cast<std::intptr_t>(hWindow));
    theMessage = static_cast<UINT>(lMsg);
    theWhat = static_cast<WPARAM>(lWhat);
    return 0;
}

extern "C" __attribute__((dllexport)) std::int32_t QX_DRIVER_CALL QXCFG_ImageLoad() {
    for (const LPARAM percent : {0, 50, 100}) {
        PostMessageW(theWindow, theMessage + 1, theWhat, percent); // not the requested message
        PostMessageW(theWindow, theMessage, theWhat, percent);
    }
    return IsWindow(theWindow) != 0 ? 0 : 17;
}
