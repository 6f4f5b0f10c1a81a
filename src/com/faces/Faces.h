// The faces of the visible controls: which child controls belong together, and what the user's
// actions on them call.
#pragma once

#include "com/Object.h"
#include "com/faces/Part.h"

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace qx::com {

// What a control reports to those who show it.
struct FaceEvents {
    std::function<void()> refreshed;                 // what it shows has changed
    std::function<void(std::string_view)> takeFocus; // the part with this id is to have the focus
};

struct FaceTable {
    Part root;
    std::function<std::vector<Subscription>(const FaceEvents&)> subscribe;
    std::function<void()> shown; // to be called once the face has appeared; may be empty
};

// None when the object is no visible control. The object outlives the table.
[[nodiscard]] std::optional<FaceTable> FaceOf(const Object& object);

// One for each visible control.
template <typename C>
[[nodiscard]] FaceTable FaceTableOf(C& control);

// A control whose only event for its face is Refreshed.
template <typename C>
[[nodiscard]] std::function<std::vector<Subscription>(const FaceEvents&)> RefreshOf(C& control) {
    return [&control](const FaceEvents& events) {
        std::vector<Subscription> subscriptions;
        subscriptions.push_back(control.Refreshed.Subscribe(events.refreshed));
        return subscriptions;
    };
}

} // namespace qx::com
