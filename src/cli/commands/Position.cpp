#include "cli/commands/Commands.h"

#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <chrono>
#include <csignal>
#include <memory>
#include <thread>

namespace qx::cli {

namespace {

// Keeps the keyboard in position-programming mode during its lifetime.
class PositionMode {
public:
    explicit PositionMode(host::Session& session) : m_session(session) {
        m_session.Run(host::Error(host::Cause::PositionModeNotEntered),
                      [&] { m_session.Access().EnablePositionProgMode(); });
    }
    void Leave() {
        m_isOn = false;
        m_session.Run(host::Error(host::Cause::PositionModeNotLeft),
                      [&] { m_session.Access().DisablePositionProgMode(); });
    }
    ~PositionMode() {
        if (m_isOn)
            m_session.Access().DisablePositionProgMode();
    }
    PositionMode(const PositionMode&) = delete;
    PositionMode& operator=(const PositionMode&) = delete;

private:
    host::Session& m_session;
    bool m_isOn = true;
};

struct Limits {
    Long count = 0;   // keys; 0: no limit
    Long seconds = 0; // 0: no limit
};

void Watch(Context& context, const Limits& limits) {
    constexpr auto kInterval = std::chrono::milliseconds(100);
    host::Session& session = context.Keyboard();
    const QXKeyboardLayoutData& layout = context.Layout();
    PositionMode mode(session);
    context.Note(context.Simulated() != nullptr
                     ? "this keyboard is simulated: nobody can press its keys; Ctrl+C ends"
                     : "press keys on the keyboard; Ctrl+C ends");
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(limits.seconds);
    for (Long keys = 0;
         InterruptWatch::Signal() == 0 && (limits.count == 0 || keys < limits.count);) {
        const Long code = session.Access().GetPositionCodeKey();
        if (code == 0 || code == -1 || code == -2) { // no key was pressed
            if (limits.seconds != 0 && std::chrono::steady_clock::now() >= end)
                break;
            std::this_thread::sleep_for(kInterval);
            continue;
        }
        ++keys;
        context.Result({{"key", code}, {"caption", layout.KeyLongCaption(code)}},
                       {"key " + KeyName(code, &layout)});
        context.Flush();
    }
    mode.Leave();
    try {
        context.CloseKeyboard();
    } catch (const Interrupted& interrupted) {
        if (interrupted.signal != SIGINT) // Ctrl+C is the usual way to end the watch
            throw;
    }
}

} // namespace

Command PositionCommand() {
    const auto limits = std::make_shared<Limits>();
    return {
        .name = "position",
        .summary = "Work with the keyboard's position codes",
        .footer = "Example:\n  qxconf position watch",
        .commands = {{
            .name = "watch",
            .summary = "Print each key as it is pressed",
            .options = {{.name = "--count",
                         .target = &limits->count,
                         .summary = "End after this many keys",
                         .value = "N",
                         .range = kAboveZero},
                        {.name = "--seconds",
                         .target = &limits->seconds,
                         .summary = "End after this many seconds",
                         .value = "N",
                         .range = kAboveZero}},
            .footer = "While watching, the keyboard reports its keys here instead of typing.\n\n"
                      "Examples:\n"
                      "  qxconf position watch\n"
                      "  qxconf position watch --count 1",
            .run = [limits](Context& context) { Watch(context, *limits); },
        }},
    };
}

} // namespace qx::cli
