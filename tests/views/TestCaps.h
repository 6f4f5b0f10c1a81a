// Caps of keys for tests.
#pragma once

#include "views/KeyGrid.h"

namespace qx::views {

inline KeyCap Cap(int index, const QRectF& place) {
    KeyCap cap;
    cap.index = index;
    cap.place = place;
    cap.caption = QStringLiteral("K%1").arg(index);
    cap.name = QStringLiteral("Key %1").arg(index);
    cap.toolTip = QStringLiteral("Tip %1 <>").arg(index);
    cap.color = Qt::lightGray;
    cap.state = KeyState::Empty;
    return cap;
}

} // namespace qx::views
