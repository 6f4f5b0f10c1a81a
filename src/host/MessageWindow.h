// MessageWindow: receives a driver's messages on systems without window messages.
//
// A window has a handle for QXKeyboardAccess::SetNotificationValues. Drivers call Post, which
// delivers to the window with that handle immediately, on the caller's thread; messages to unknown
// windows are dropped, and so are exceptions of a handler, since a driver is C code.
#pragma once

#include "qxcontrols/device/ConfigDriver.h"

#include <cstdint>
#include <functional>

namespace qx::host {

class MessageWindow {
public:
    using Handler =
        std::function<void(std::int32_t lMsg, std::int32_t wParam, std::int32_t lParam)>;

    explicit MessageWindow(Handler handler);
    ~MessageWindow();
    MessageWindow(const MessageWindow&) = delete;
    MessageWindow& operator=(const MessageWindow&) = delete;

    [[nodiscard]] std::int32_t Handle() const { return m_handle; }

    static void QX_DRIVER_CALL Post(std::int32_t hWindow, std::int32_t lMsg, std::int32_t wParam,
                                    std::int32_t lParam);

private:
    Handler m_handler;
    std::int32_t m_handle;
};

} // namespace qx::host
