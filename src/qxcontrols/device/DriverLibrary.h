// DriverLibrary: a configuration driver in a shared library.
#pragma once

#include "qxcontrols/device/ConfigDriver.h"
#include "qxcontrols/platform/SharedLibrary.h"

#include <memory>
#include <string>

namespace qx {

class DriverLibrary : public ConfigDriver {
public:
    // The usual file name on Windows.
    static constexpr const char* kWindowsFileName = "TANDORQX.DLL";

    // Loads the library and looks up every function that the system calls. Throws
    // std::runtime_error with the file name and either all missing functions or the system's
    // reason.
    explicit DriverLibrary(const std::string& sFilename);
    ~DriverLibrary() override;
    DriverLibrary(const DriverLibrary&) = delete;
    DriverLibrary& operator=(const DriverLibrary&) = delete;

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t name parameters override;
#include "qxcontrols/device/DriverFunctions.def"
    void QXSIM_SetMessagePoster(MessagePoster post) override;

    // A function of the library by name, or null: for functions of particular drivers. The type
    // must be the function's own, including QX_DRIVER_CALL.
    template <typename Function>
    [[nodiscard]] Function Find(const char* name) const {
        return m_library.Find<Function>(name);
    }

private:
    struct Functions;

    SharedLibrary m_library;
    std::unique_ptr<Functions> m_functions;
};

} // namespace qx
