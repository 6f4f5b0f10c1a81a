// What a container tells the controls on its form.
#pragma once

#include "com/windows/Com.h"

namespace qx::com {

struct Ambient {
    bool isUserMode = true; // false while the form is being designed
    bool isDead = false;    // the controls are to react to nothing for the time being
    COLORREF background = GetSysColor(COLOR_BTNFACE);
    COLORREF foreground = GetSysColor(COLOR_BTNTEXT);
    LCID locale = LOCALE_USER_DEFAULT;
    ComPtr<IFont> font; // null is the system's own
};

// What the site does not tell keeps its default.
[[nodiscard]] Ambient AmbientOf(IOleClientSite* site);

} // namespace qx::com
