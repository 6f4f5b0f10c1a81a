// The simulated keyboard as a driver library.
//
// It exports the functions of a driver, and some of its own that select the keyboard's file and
// inject faults. No exception leaves a function.

#include "files/SystemTexts.h"
#include "simulator/SimulatedDriver.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <string>
#include <string_view>

#ifdef _WIN32
#define QX_EXPORT extern "C" __declspec(dllexport)
#else
#define QX_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

using qx::sim::SimulatedDriver;
using qx::sim::Status;

// The library's only keyboard, and the message poster, which the host owns and keeps alive.
std::unique_ptr<SimulatedDriver> theDriver;
qx::MessagePoster thePoster = nullptr;
std::string theOpeningError; // why opening failed

void Open(const std::filesystem::path& file, const std::string& model) {
    theDriver.reset(); // releases its file first
    theOpeningError.clear();
    theDriver = std::make_unique<SimulatedDriver>(file, model);
    theDriver->QXSIM_SetMessagePoster(thePoster);
}

std::int32_t Failed(Status status, const std::exception& error) {
    try {
        theOpeningError = error.what();
    } catch (const std::exception&) { // no memory for the message
    }
    return static_cast<std::int32_t>(status);
}

// Runs the function with the selected keyboard, or the user's own if none is selected.
template <typename Function>
std::int32_t WithDriver(Function function) {
    try {
        if (!theDriver) {
            const auto folder = qx::files::UserDataFolder();
            std::filesystem::create_directories(folder);
            Open(folder / "keyboard.qxk", "full");
        }
        return function(*theDriver);
    } catch (const std::exception& error) {
        return Failed(Status::FileFailed, error);
    }
}

} // namespace

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    QX_EXPORT std::int32_t QX_DRIVER_CALL name parameters {                                        \
        return WithDriver([&](SimulatedDriver& driver) { return driver.name arguments; });         \
    }
#include "qxcontrols/device/DriverFunctions.def"

QX_EXPORT void QX_DRIVER_CALL QXSIM_SetMessagePoster(qx::MessagePoster post) {
    thePoster = post;
    if (theDriver)
        theDriver->QXSIM_SetMessagePoster(post);
}

// Selects the keyboard that QXCFG_Init opens: its file, and the model (a built-in one or a file)
// for creating it if it does not exist. Returns a status; the previous keyboard is closed even if
// that is not 0.
QX_EXPORT std::int32_t QX_DRIVER_CALL QXSIM_SetKeyboard(const char* file, const char* model) {
    if (file == nullptr || model == nullptr)
        return static_cast<std::int32_t>(Status::NoArgument);
    try {
        Open(qx::files::PathOf(file), model);
        return 0;
    } catch (const std::exception& error) {
        return Failed(Status::ModelInvalid, error);
    }
}

// Explains the status of the last call, as text that ends in a zero byte and is cut off if the
// buffer of `size` bytes is too small. Returns the length without the zero byte.
QX_EXPORT std::int32_t QX_DRIVER_CALL QXSIM_StatusText(std::int32_t status, char* text,
                                                       std::int32_t size) {
    if (text == nullptr || size <= 0)
        return 0;
    std::string words = theDriver ? theDriver->LastError() : theOpeningError;
    if (words.empty())
        words = qx::sim::StatusText(status);
    words = words.substr(0, static_cast<std::size_t>(size) - 1);
    std::copy(words.begin(), words.end(), text);
    text[words.size()] = '\0';
    return static_cast<std::int32_t>(words.size());
}

// Closes the keyboard and clears the selection.
QX_EXPORT void QX_DRIVER_CALL QXSIM_Close() {
    theDriver.reset();
}

// Faults, as in SimulatedDriver.
QX_EXPORT void QX_DRIVER_CALL QXSIM_FailCall(std::int32_t call, std::int32_t status,
                                             std::int32_t forEver) {
    WithDriver([&](SimulatedDriver& driver) {
        driver.FailCall(call, status, forEver != 0);
        return 0;
    });
}

QX_EXPORT void QX_DRIVER_CALL QXSIM_StopTransferAfter(std::int32_t bytes) {
    WithDriver([&](SimulatedDriver& driver) {
        driver.StopTransferAfter(bytes);
        return 0;
    });
}

// A negative seed ends the request.
QX_EXPORT void QX_DRIVER_CALL QXSIM_LieFrom(std::int32_t seed) {
    WithDriver([&](SimulatedDriver& driver) {
        if (seed < 0)
            driver.EndLies();
        else
            driver.LieFrom(static_cast<std::uint32_t>(seed));
        return 0;
    });
}

QX_EXPORT void QX_DRIVER_CALL QXSIM_QueuePositionKey(std::int32_t code) {
    WithDriver([&](SimulatedDriver& driver) {
        driver.QueuePositionKey(code);
        return 0;
    });
}
