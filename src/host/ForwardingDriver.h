// ForwardingDriver: a driver that forwards every call to another one and observes its result.
#pragma once

#include "qxcontrols/device/ConfigDriver.h"

#include <string_view>

namespace qx::host {

// The kind of a driver function's result, according to its table.
enum class DriverResult { Status, Ignored, Value };

class ForwardingDriver : public ConfigDriver {
public:
    // `inner` must outlive this object.
    explicit ForwardingDriver(ConfigDriver& inner) : m_inner(inner) {}

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t name parameters override {                                                        \
        try {                                                                                      \
            return Noted(#name, DriverResult::result, m_inner.name arguments);                     \
        } catch (...) {                                                                            \
            Noted(#name, DriverResult::result, kThrew);                                            \
            throw;                                                                                 \
        }                                                                                          \
    }
#include "qxcontrols/device/DriverFunctions.def"
    void QXSIM_SetMessagePoster(MessagePoster post) override {
        m_inner.QXSIM_SetMessagePoster(post);
    }

protected:
    // The result reported for a call that threw, which no driver should do.
    static constexpr std::int32_t kThrew = -1;

    // Called after every call; returns the result to pass on.
    virtual std::int32_t Noted(std::string_view function, DriverResult kind,
                               std::int32_t result) = 0;

private:
    ConfigDriver& m_inner;
};

} // namespace qx::host
