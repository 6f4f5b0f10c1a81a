// The timers of forms.
#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace qx {

// A timer of a form: while it is enabled, the host calls Tick once per interval, on the
// user-interface thread. The default class relies on its host for this.
class FormTimer {
public:
    virtual ~FormTimer() = default;

    [[nodiscard]] int Interval() const { return m_milliseconds; }
    virtual void SetInterval(int milliseconds) { m_milliseconds = milliseconds; }
    [[nodiscard]] bool Enabled() const { return m_enabled; }
    virtual void SetEnabled(bool fEnabled) { m_enabled = fEnabled; }

    // The action of a tick; set by the form.
    void SetHandler(std::function<void()> handler) { m_handler = std::move(handler); }
    // Called by the host when a tick is due; does nothing if the timer is not enabled.
    void Tick() {
        if (m_enabled && m_handler)
            m_handler();
    }

private:
    std::function<void()> m_handler;
    int m_milliseconds = 0;
    bool m_enabled = false;
};

// Creates the timers: a host's own are driven by its message loop.
class FormTimers {
public:
    virtual ~FormTimers() = default;
    [[nodiscard]] virtual std::unique_ptr<FormTimer> Create() {
        return std::make_unique<FormTimer>();
    }
};

} // namespace qx
