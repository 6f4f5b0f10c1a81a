// Places of keys in rows, for key caps.
#pragma once

#include "qxcontrols/keys/KeyRows.h"

#include <QRectF>

namespace qx::views {

inline QRectF RowPlace(const KeyRows& rows, int key) {
    const auto [left, top, width, height] = rows.PlaceOf(key);
    return {left, top, width, height};
}

} // namespace qx::views
