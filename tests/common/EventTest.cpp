#include "qxcontrols/common/Event.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace qx {

TEST(Event, RaisesInOrderAndReturnsAnswers) {
    Event<int, bool&> event;
    std::string order;
    auto first = event.Subscribe([&](int, bool&) { order += "1"; });
    auto second = event.Subscribe([&](int value, bool& answer) {
        order += "2";
        answer = value == 7;
    });
    bool answer = false;
    event.Raise(7, answer);
    EXPECT_EQ(order, "12");
    EXPECT_TRUE(answer);
    first.End();
    second = Subscription();
    event.Raise(7, answer);
    EXPECT_EQ(order, "12");
}

TEST(Event, HandlersMayEndAndBeginSubscriptionsWhileItIsRaised) {
    Event<> event;
    std::string order;
    Subscription later;
    Subscription second;
    auto first = event.Subscribe([&] {
        order += "1";
        second.End();
        later = event.Subscribe([&] { order += "3"; });
    });
    second = event.Subscribe([&] { order += "2"; });
    event.Raise();
    EXPECT_EQ(order, "1");
    first.End();
    event.Raise();
    EXPECT_EQ(order, "13");
}

TEST(Event, AHandlerMayEndItselfAndDestroyTheEvent) {
    auto event = std::make_unique<Event<>>();
    int calls = 0;
    Subscription own;
    own = event->Subscribe([&] {
        own.End();
        event.reset();
        ++calls;
    });
    auto other = event->Subscribe([&] { ++calls; });
    event->Raise();
    EXPECT_EQ(calls, 2); // the event was already being raised
    other.End();         // its event no longer exists
}

} // namespace qx
