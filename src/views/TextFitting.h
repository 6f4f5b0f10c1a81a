// TextFitting: how a text is made to fit into a small area.
#pragma once

#include <QFont>
#include <QSizeF>
#include <QStringList>

namespace qx::views {

// The text's lines in a font of `size` pixels or smaller, down to `leastPixels`, and with narrower
// letters if it must be; the font gets that size and stretch. A line that does not fit even so is
// cut by the caller.
[[nodiscard]] QStringList FittingLines(const QString& text, QFont& font, double size,
                                       const QSizeF& area, int leastPixels);

} // namespace qx::views
