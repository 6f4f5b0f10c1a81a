// The simulated keyboard as a driver library.
//
// It exports the functions of a driver, and some of its own with which a host chooses the keyboard's
// file and asks for faults. No exception leaves a function.

#include "simulator/SimulatedDriver.h"

#include <memory>

#ifdef _WIN32
#define QX_EXPORT extern "C" __declspec(dllexport)
#else
#define QX_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

using qx::sim::SimulatedDriver;
using qx::sim::Status;

// The one keyboard of the library; none before QXSIM_SetKeyboard.
std::unique_ptr<SimulatedDriver>& Driver() {
    static std::unique_ptr<SimulatedDriver> driver;
    return driver;
}

} // namespace

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    QX_EXPORT std::int32_t QX_DRIVER_CALL name parameters {                                        \
        return Driver() ? Driver()->name arguments : static_cast<std::int32_t>(Status::NotOpen);   \
    }
#include "qxcontrols/device/DriverFunctions.def"

QX_EXPORT void QX_DRIVER_CALL QXSIM_SetMessagePoster(qx::MessagePoster post) {
    if (Driver())
        Driver()->QXSIM_SetMessagePoster(post);
}

// Which keyboard QXCFG_Init opens: its file, and the model (a shipped one or a file) when it is new.
QX_EXPORT std::int32_t QX_DRIVER_CALL QXSIM_SetKeyboard(const char* file, const char* model) {
    try {
        Driver().reset();
        Driver() = std::make_unique<SimulatedDriver>(file, model);
        return 0;
    } catch (...) {
        return static_cast<std::int32_t>(Status::FileInvalid);
    }
}

// Gives the keyboard's file back.
QX_EXPORT void QX_DRIVER_CALL QXSIM_Close() {
    Driver().reset();
}

QX_EXPORT void QX_DRIVER_CALL QXSIM_FailCall(std::int32_t call, std::int32_t status,
                                             std::int32_t forEver) {
    if (Driver())
        Driver()->FailCall(call, status, forEver != 0);
}

QX_EXPORT void QX_DRIVER_CALL QXSIM_StopTransferAfter(std::int32_t bytes) {
    if (Driver())
        Driver()->StopTransferAfter(bytes);
}

QX_EXPORT void QX_DRIVER_CALL QXSIM_QueuePositionKey(std::int32_t code) {
    if (Driver())
        Driver()->QueuePositionKey(code);
}
