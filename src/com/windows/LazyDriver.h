// LazyDriver: the keyboard's driver library, loaded when it is first needed.
//
// It is looked for by its customary name in the folder of the host's program, in the server's own
// and in the system's; never in the current folder. Without it every call fails with status -1 and
// a trace line; it is looked for again at the next start-up of the keyboard.
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

    std::recursive_mutex m_mutex; // one keyboard for the objects of all apartments
    std::optional<DriverLibrary> m_library;
    bool m_isMissing = false;
};

} // namespace qx::com
