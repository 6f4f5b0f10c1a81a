// FaultWords: what is wrong with a document or a keyboard's memory, in the language of the program.
#pragma once

#include "json/Fault.h"

#include <QString>

namespace qx::app {

// With the place in front, if there is one: "/magnetCard/tracks/0/header/3: 300 is ...".
[[nodiscard]] QString FaultText(const json::Fault& fault);

} // namespace qx::app
