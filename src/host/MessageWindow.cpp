#include "host/MessageWindow.h"

#include <map>
#include <utility>

namespace qx::host {

namespace {

// All windows by handle. A driver's C callback has no context argument.
std::map<std::int32_t, MessageWindow::Handler*>& Windows() {
    static std::map<std::int32_t, MessageWindow::Handler*> windows;
    return windows;
}

std::int32_t NextHandle() {
    static std::int32_t last = 0;
    return ++last;
}

} // namespace

MessageWindow::MessageWindow(Handler handler)
    : m_handler(std::move(handler)), m_handle(NextHandle()) {
    Windows().emplace(m_handle, &m_handler);
}

MessageWindow::~MessageWindow() {
    Windows().erase(m_handle);
}

void QX_DRIVER_CALL MessageWindow::Post(std::int32_t hWindow, std::int32_t lMsg,
                                        std::int32_t wParam, std::int32_t lParam) {
    const auto found = Windows().find(hWindow);
    if (found == Windows().end())
        return;
    try {
        (*found->second)(lMsg, wParam, lParam);
    } catch (...) { // a message is only a notification: the transfer continues
    }
}

} // namespace qx::host
