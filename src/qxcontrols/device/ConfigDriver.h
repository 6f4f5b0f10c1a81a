// ConfigDriver: the connection to the device, as the functions of the keyboard's configuration
// driver.
//
// Only QXKeyboardAccess calls it, on the user-interface thread, one call at a time. Every function
// in DriverFunctions.def is a pure virtual member here, with the same name, arguments and result.
#pragma once

#include <cstdint>

namespace qx {

// The calling convention of drivers and their callbacks: the platform's default for C, but stdcall
// on 32-bit Windows.
#if defined(_WIN32) && !defined(_WIN64)
#define QX_DRIVER_CALL __stdcall
#else
#define QX_DRIVER_CALL
#endif

// Delivers a message to a window of the host, on systems without window messages.
using MessagePoster = void(QX_DRIVER_CALL*)(std::int32_t hWindow, std::int32_t lMsg,
                                            std::int32_t wParam, std::int32_t lParam);

class ConfigDriver {
public:
    virtual ~ConfigDriver() = default;

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    virtual std::int32_t name parameters = 0;
#include "qxcontrols/device/DriverFunctions.def"

    // Passes the driver the function for posting its progress messages: (hWindow, lMsg, lWhat,
    // percent done 0 to 100), during a transfer, on the transfer's thread. Optional: other drivers
    // post window messages, or nothing.
    virtual void QXSIM_SetMessagePoster(MessagePoster /*post*/) {}
};

} // namespace qx
