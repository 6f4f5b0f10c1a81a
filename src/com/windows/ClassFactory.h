// The class factory of one class.
#pragma once

#include "com/windows/Com.h"

namespace qx::com {

struct ServedClass;

// As DllGetClassObject hands it out.
[[nodiscard]] HRESULT GetClassFactory(const ServedClass& served, REFIID iid, void** out);

} // namespace qx::com
