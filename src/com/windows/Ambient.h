// The properties that a container gives the controls on its form.
#pragma once

#include "com/windows/Com.h"

namespace qx::com {

struct Ambient {
    bool isUserMode = true; // false while the form is being designed
    bool isDead = false;    // the controls must not react to anything for now
    COLORREF background = GetSysColor(COLOR_BTNFACE);
    COLORREF foreground = GetSysColor(COLOR_BTNTEXT);
    LCID locale = LOCALE_USER_DEFAULT;
    ComPtr<IFont> font; // null for the system font
};

// A property that the site does not provide keeps its default.
[[nodiscard]] Ambient AmbientOf(IOleClientSite* site);

} // namespace qx::com
