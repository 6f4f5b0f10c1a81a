// The key sheet as an SVG drawing, its pages below one another.
#pragma once

#include "sheet/SheetPages.h"

#include <QByteArray>
#include <QString>

namespace qx::sheet {

[[nodiscard]] QByteArray SvgSheet(const SheetPages& pages, const QString& title);

} // namespace qx::sheet
