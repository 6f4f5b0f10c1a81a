// TextFitting: how a text is made to fit into a small area.
#pragma once

#include <QFont>
#include <QSizeF>
#include <QStringList>

namespace qx::views {

// The text's lines in a font of `size` pixels or smaller; the font gets that size. What does not
// fit even so is cut by the caller. `pixel` is that of the screen: a finer one can show a word
// smaller.
[[nodiscard]] QStringList FittingLines(const QString& text, QFont& font, double size,
                                       const QSizeF& area, double pixel);

} // namespace qx::views
