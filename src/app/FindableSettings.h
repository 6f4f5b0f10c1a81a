// FindableSettings: every setting of the document, and every key that can be programmed, for the
// field that finds them by name.
#pragma once

#include "app/QuickFind.h"

#include <functional>
#include <string>
#include <vector>

namespace qx::app {

class Workbench;

// A key without settings is listed by itself. `goTo` shows a place.
[[nodiscard]] std::vector<Findable>
FindableSettings(Workbench& workbench, const std::function<void(const std::string& place)>& goTo);

} // namespace qx::app
