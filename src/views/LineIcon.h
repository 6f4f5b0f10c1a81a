// LineIcon: an icon of lines in the colour of the text around it, sharp at any size.
#pragma once

#include <QIcon>
#include <QPainterPath>
#include <QString>

namespace qx::views {

// The icon of the file icons/NAME.svg, drawn in the palette's text colour of the moment; empty for
// an unknown name.
[[nodiscard]] QIcon LineIcon(const QString& name);

// The lines of such a file, on its grid of 24 by 24. Of SVG it understands what these files use:
// rectangles, circles, and paths of the commands M, L, H, V, C and Z, absolute or relative. Empty
// where there is anything else.
[[nodiscard]] QPainterPath LinesOfSvg(const QByteArray& svg);

} // namespace qx::views
