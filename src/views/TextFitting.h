// TextFitting: how a text is made to fit into a small area.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QSizeF>
#include <QStringList>

namespace qx::views {

// The height of that many lines; they are set a little closer than a font asks for, so that two of
// them have room on a small cap.
[[nodiscard]] double HeightOfLines(const QFontMetricsF& metrics, qsizetype lines);
[[nodiscard]] double LineStep(const QFontMetricsF& metrics);

// The text's lines in a font of `size` pixels or smaller, down to `leastPixels`, and with narrower
// letters than the font has if it must be, broken between words only; two lines are better than
// smaller or narrower letters. The font gets that size and stretch. A line
// that does not fit even so is cut by the caller. The blank parts of the first and the last line
// may go beyond the area.
[[nodiscard]] QStringList FittingLines(const QString& text, QFont& font, double size,
                                       const QSizeF& area, int leastPixels);

} // namespace qx::views
