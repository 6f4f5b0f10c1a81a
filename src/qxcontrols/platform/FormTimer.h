// The timers of forms.
#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace qx {

// A timer of a form: while it is enabled, the host calls Tick once every interval, on the
// user-interface thread. The default leaves that to its host altogether.
class FormTimer {
public:
    virtual ~FormTimer() = default;

    [[nodiscard]] int Interval() const { return m_milliseconds; }
    virtual void SetInterval(int milliseconds) { m_milliseconds = milliseconds; }
    [[nodiscard]] bool Enabled() const { return m_enabled; }
    virtual void SetEnabled(bool fEnabled) { m_enabled = fEnabled; }

    // What a tick does; for the form.
    void SetHandler(std::function<void()> handler) { m_handler = std::move(handler); }
    // A tick is due; for the host. Nothing happens while the timer is not enabled.
    void Tick() {
        if (m_enabled && m_handler)
            m_handler();
    }

private:
    std::function<void()> m_handler;
    int m_milliseconds = 0;
    bool m_enabled = false;
};

// Makes the timers: a host's own are driven by its message loop.
class FormTimers {
public:
    virtual ~FormTimers() = default;
    [[nodiscard]] virtual std::unique_ptr<FormTimer> Create() {
        return std::make_unique<FormTimer>();
    }
};

} // namespace qx
