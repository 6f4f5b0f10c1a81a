// MessageWindow: where a driver's messages arrive on machines without window messages.
//
// A window has a handle to give to QXKeyboardAccess::SetNotificationValues. Post is the function
// for drivers: it delivers to the window of that handle, at once and on the caller's thread; a
// message to a window that does not exist is dropped, and so is whatever a handler throws, since a
// driver is C.
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
