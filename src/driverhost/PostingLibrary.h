// PostingLibrary: a driver library that reports progress as drivers on Windows do, by messages to a
// window. The window that the calling program names belongs to that program, which reads no
// messages while it waits for an answer; so one of this process takes its place.
#pragma once

#include "qxcontrols/device/DriverLibrary.h"

#include <memory>
#include <string>

namespace qx::driverhost {

class PostingLibrary : public DriverLibrary {
public:
    // Messages arrive at `post`, on a thread of their own, for the window that the program has
    // named. Throws what DriverLibrary throws.
    PostingLibrary(const std::string& file, MessagePoster post);
    ~PostingLibrary() override;
    PostingLibrary(const PostingLibrary&) = delete;
    PostingLibrary& operator=(const PostingLibrary&) = delete;

    std::int32_t QXCFG_TransferNotification(std::int32_t hWindow, std::int32_t lMsg,
                                            std::int32_t lWhat) override;
    // Waits until the messages that were posted before have arrived.
    void Flush();

private:
    class Window;
    MessagePoster m_post;
    std::unique_ptr<Window> m_window; // none while nobody is notified
};

} // namespace qx::driverhost
