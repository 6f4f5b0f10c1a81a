// The parts that show keyboards, shared by all faces that have one.
#pragma once

#include "com/faces/Faces.h"
#include "qxcontrols/keys/KeyRows.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"
#include "qxcontrols/pos/QXPosDisplay.h"

#include <functional>
#include <string>
#include <vector>

namespace qx::com {

void Put(KeyCap& cap, const KeyRows& rows, int place);

[[nodiscard]] KeyCap CapOf(const Button& key, Integer index, Long color);

[[nodiscard]] Part LayoutPart(QXLayoutDisplay& display);

// The functions that a control with a POS display adds to it; each may be empty.
struct PosUse {
    std::function<std::string(Integer)> labelOf; // a key's label in the layout
    std::function<std::string(Integer)> sentBy;  // the codes that a key sends, as text
    std::function<void(Integer)> reach;
    std::function<void(Integer)> take;
};
[[nodiscard]] Part PosPart(QXPosDisplay& display, const PosUse& use = {});

[[nodiscard]] std::vector<Subscription> SubscribedTo(QXLayoutDisplay& display,
                                                     const FaceEvents& events);
[[nodiscard]] std::vector<Subscription> SubscribedTo(QXPosDisplay& display,
                                                     const FaceEvents& events);

// For a control that has a display among its children.
template <typename C, typename Display>
std::function<std::vector<Subscription>(const FaceEvents&)> WithDisplay(C& control,
                                                                        Display& display) {
    return [&control, &display](const FaceEvents& events) {
        std::vector<Subscription> subscriptions = SubscribedTo(display, events);
        subscriptions.push_back(control.Refreshed.Subscribe(events.refreshed));
        return subscriptions;
    };
}

} // namespace qx::com
