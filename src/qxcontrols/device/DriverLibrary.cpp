#include "qxcontrols/device/DriverLibrary.h"

#include <memory>

namespace qx {

struct DriverLibrary::Functions {
#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t(QX_DRIVER_CALL* name) parameters = nullptr;
#include "qxcontrols/device/DriverFunctions.def"
};

namespace {

// Each argument is passed in one stack slot or register.
template <typename... Arguments>
constexpr bool TakesOneSlotEach(std::int32_t(QX_DRIVER_CALL* /*function*/)(Arguments...)) {
    return ((sizeof(Arguments) <= sizeof(void*)) && ...);
}

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    static_assert(TakesOneSlotEach(static_cast<std::int32_t(QX_DRIVER_CALL*) parameters>(nullptr)));
#include "qxcontrols/device/DriverFunctions.def"

} // namespace

DriverLibrary::DriverLibrary(const std::string& sFilename)
    : m_library(sFilename, "driver library"), m_functions(std::make_unique<Functions>()) {
    std::vector<std::string> lacking;
    std::string names;
#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    m_functions->name = m_library.Find<decltype(Functions::name)>(#name);                          \
    if (m_functions->name == nullptr) {                                                            \
        lacking.emplace_back(#name);                                                               \
        names += (names.empty() ? "" : ", ") + lacking.back();                                     \
    }
#include "qxcontrols/device/DriverFunctions.def"
    if (!lacking.empty())
        throw LibraryError("the driver library " + sFilename + " lacks the functions " + names,
                           LibraryError::Kind::LacksFunctions, {}, lacking);
}

DriverLibrary::~DriverLibrary() = default;

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t DriverLibrary::name parameters {                                                  \
        return m_functions->name arguments;                                                        \
    }
#include "qxcontrols/device/DriverFunctions.def"

void DriverLibrary::QXSIM_SetMessagePoster(MessagePoster post) {
    using Setter = void(QX_DRIVER_CALL*)(MessagePoster);
    if (const auto set = Find<Setter>("QXSIM_SetMessagePoster"))
        set(post);
}

} // namespace qx
