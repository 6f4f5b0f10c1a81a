// The side-by-side manifest: with it beside the server, a host that names the assembly QXControls
// in its own manifest uses the library without any registration.
#pragma once

#include <string>

namespace qx::com {

[[nodiscard]] std::string ManifestText();

} // namespace qx::com
