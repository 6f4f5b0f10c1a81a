// PostingLibrary: a driver library that reports progress by window messages, as drivers on Windows
// do. The window named by the calling program belongs to that program, which reads no messages
// while it waits for an answer; a window of this process receives them instead.
#pragma once

#include "qxcontrols/device/DriverLibrary.h"

#include <memory>
#include <string>

namespace qx::driverhost {

class PostingLibrary : public DriverLibrary {
public:
    // Calls `post` on a separate thread for each message, with the window that the program has
    // named. Throws the same exceptions as DriverLibrary.
    PostingLibrary(const std::string& file, MessagePoster post);
    ~PostingLibrary() override;
    PostingLibrary(const PostingLibrary&) = delete;
    PostingLibrary& operator=(const PostingLibrary&) = delete;

    std::int32_t QXCFG_TransferNotification(std::int32_t hWindow, std::int32_t lMsg,
                                            std::int32_t lWhat) override;
    // Waits until all messages posted so far have arrived.
    void Flush();

private:
    class Window;
    MessagePoster m_post;
    std::unique_ptr<Window> m_window; // null while no window is notified
};

} // namespace qx::driverhost
