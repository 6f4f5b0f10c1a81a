// TitleFont: the font of a title, from that of the text around it.
#pragma once

#include <QFont>

namespace qx::views {

[[nodiscard]] inline QFont TitleFont(QFont font, double scale = 1.2) {
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * scale);
    return font;
}

} // namespace qx::views
