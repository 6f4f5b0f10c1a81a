// RemoteDriver: a driver library that runs in a separate process.
//
// Whatever the driver does there (crash, hang, end its process, write beyond a buffer) affects only
// that process. From then on every call here fails at once with kGone, and Failure explains why.
// So does a call during another one: from its progress messages, or while it waits.
#pragma once

#include "files/Problem.h"
#include "process/ChildProcess.h"
#include "qxcontrols/device/ConfigDriver.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace qx::driverhost {

class Frame;
class Values;

// How a driver library is isolated.
struct Isolation {
    // To load it; empty: the matching one beside this one.
    std::filesystem::path program{};
    std::chrono::milliseconds limit = std::chrono::seconds(120);
    // Whether the user has cancelled before anything was written: a call that does not write to the
    // keyboard is then abandoned after a few seconds. May be empty.
    std::function<bool()> isToEnd{};
    // Called every 50 ms while a call lasts, or many short ones follow each other, to paint a
    // window for example; throws nothing. May be empty.
    std::function<void()> onWait{};
};

class RemoteDriver : public ConfigDriver {
public:
    static constexpr std::int32_t kGone = INT32_MIN; // its low 16 bits are 0: no directory

    // Starts the process and loads the library in it. Throws files::ProblemError if that fails.
    RemoteDriver(const std::filesystem::path& library, Isolation isolation);
    // Ends the process, and kills it if it does not end by itself.
    ~RemoteDriver() override;
    RemoteDriver(const RemoteDriver&) = delete;
    RemoteDriver& operator=(const RemoteDriver&) = delete;

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t name parameters override;
#include "qxcontrols/device/DriverFunctions.def"
    void QXSIM_SetMessagePoster(MessagePoster post) override;

    // As in LibraryExtras.h.
    [[nodiscard]] std::string StatusText(std::int32_t lStatus);
    [[nodiscard]] std::optional<std::int32_t> SetKeyboard(const std::string& file,
                                                          const std::string& model);

    // Why the driver stopped, with the call that failed; none while it works.
    [[nodiscard]] const std::optional<files::Problem>& Failure() const {
        return m_failure;
    }

private:
    class Progress;

    template <typename... Items>
    std::int32_t Call(std::uint8_t function, const char* name, const Items&... items);
    // Sends the request and lets `take` read its answer. False if the driver is gone or is lost
    // during this call; `subject` names the call in the failure.
    template <typename Taker>
    bool Ask(const Frame& request, const std::string& subject, const Taker& take);
    [[nodiscard]] Values Await(bool mayBeGivenUp);
    void GiveUp(const std::string& subject, files::Obstacle obstacle);

    Isolation m_isolation;
    std::optional<process::ChildProcess> m_child; // empty once the driver is gone
    std::string m_arrived;                        // received bytes that are not yet a whole frame
    MessagePoster m_post = nullptr;
    int m_stretches = 0;                             // number of stretches of the next transfer
    bool m_isAsking = false;                         // a call lasts
    std::chrono::steady_clock::time_point m_toPaint; // when onWait is called again
    std::optional<files::Problem> m_failure;
};

} // namespace qx::driverhost
