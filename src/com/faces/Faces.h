// The faces of the visible controls: which child controls belong together, and which of the
// control's functions each user action calls.
#pragma once

#include "com/Object.h"
#include "com/faces/Part.h"

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace qx::com {

// A control's notifications to the face that shows it.
struct FaceEvents {
    std::function<void()> refreshed;                 // the displayed state has changed
    std::function<void(std::string_view)> takeFocus; // focus the part with this id
};

struct FaceTable {
    Part root;
    std::function<std::vector<Subscription>(const FaceEvents&)> subscribe;
    std::function<void()> shown; // to be called once the face has appeared; may be empty
};

// None if the object is not a visible control. The object outlives the table.
[[nodiscard]] std::optional<FaceTable> FaceOf(const Object& object);

// One for each visible control.
template <typename C>
[[nodiscard]] FaceTable FaceTableOf(C& control);

// A control whose face needs no event except Refreshed.
template <typename C>
[[nodiscard]] std::function<std::vector<Subscription>(const FaceEvents&)> RefreshOf(C& control) {
    return [&control](const FaceEvents& events) {
        std::vector<Subscription> subscriptions;
        subscriptions.push_back(control.Refreshed.Subscribe(events.refreshed));
        return subscriptions;
    };
}

} // namespace qx::com
