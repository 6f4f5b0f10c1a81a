// Event: a notification or request from a control to its host.
//
// A control owns its events and raises them; handlers run synchronously, in the order in which they
// subscribed. By-reference answers are reference arguments: `Event<bool&> RemoveHeader`. A handler
// may subscribe and unsubscribe while the event is being raised: a subscription that has ended is
// no longer called, a new one is called from the next time on.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace qx {

// The handle of a subscription, which ends when the handle is destroyed or assigned to. The event
// may be destroyed first.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> end) : m_end(std::move(end)) {}
    Subscription(Subscription&& other) noexcept : m_end(std::exchange(other.m_end, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            End();
            m_end = std::exchange(other.m_end, nullptr);
        }
        return *this;
    }
    ~Subscription() { End(); }

    void End() {
        if (const auto end = std::exchange(m_end, nullptr))
            end();
    }

private:
    std::function<void()> m_end;
};

template <typename... Args>
class Event {
public:
    using Handler = std::function<void(Args...)>;

    Event() = default;
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    [[nodiscard]] Subscription Subscribe(Handler handler) {
        auto entry = std::make_shared<Entry>(Entry{std::move(handler), true});
        m_entries->push_back(entry);
        return Subscription([entries = std::weak_ptr<Entries>(m_entries), entry] {
            entry->active = false;
            if (const auto list = entries.lock())
                std::erase(*list, entry);
        });
    }

    void Raise(Args... args) const {
        if (m_entries->empty())
            return;
        const Entries subscribed = *m_entries;
        for (const auto& entry : subscribed)
            if (entry->active)
                entry->handler(args...);
    }

private:
    struct Entry {
        Handler handler;
        bool active;
    };
    using Entries = std::vector<std::shared_ptr<Entry>>;

    std::shared_ptr<Entries> m_entries = std::make_shared<Entries>();
};

} // namespace qx
