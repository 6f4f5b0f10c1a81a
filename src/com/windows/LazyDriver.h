// LazyDriver: loads the keyboard's driver library when it is first needed.
//
// It looks for the library by its usual name in the folder of the host's program, in the server's
// own and in the system's; never in the current folder. If it is not found, every call fails with
// status -1 and a trace line; the next start-up of the keyboard looks for it again.
#pragma once

#include "qxcontrols/device/DriverLibrary.h"

#include <mutex>
#include <optional>

namespace qx::com {

class LazyDriver : public ConfigDriver {
public:
    static constexpr std::int32_t kNoDriver = -1;

    void LetGo();

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t name parameters override;
#include "qxcontrols/device/DriverFunctions.def"

private:
    [[nodiscard]] ConfigDriver* For(std::string_view sFunction);
    void Load();

    std::recursive_mutex m_mutex; // the objects of all apartments share one keyboard
    std::optional<DriverLibrary> m_library;
    bool m_isMissing = false;
};

} // namespace qx::com
