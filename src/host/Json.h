// JSON under the host layer's own names.
#pragma once

#include "json/Json.h"

namespace qx::host {

using json::Fault;
using json::FaultKind;
using json::Json;
using json::JsonPointer;
using json::ParseStrictly;
using json::PrettyText;
using json::ShortText;

} // namespace qx::host
