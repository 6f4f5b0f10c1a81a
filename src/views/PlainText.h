// Qt widgets show a text that looks like HTML as rich text, and names from files, keyboards and
// drivers may look like that: Plain makes them appear as written.
#pragma once

#include <QString>
#include <QTextDocument>

namespace qx::views {

[[nodiscard]] inline QString Plain(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

} // namespace qx::views
