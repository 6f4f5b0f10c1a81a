// Widgets take text for rich text when it looks so, and names from files, keyboards and drivers may
// look so: Plain keeps it as it is written.
#pragma once

#include <QString>
#include <QTextDocument>

namespace qx::views {

[[nodiscard]] inline QString Plain(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

} // namespace qx::views
