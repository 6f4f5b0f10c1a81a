#include "app/KeyNames.h"

#include "app/SettingWords.h"

#include <QRegularExpression>

namespace qx::app {

QString WithFunctionKeyNames(const QString& name) {
    const QString layer = QRegularExpression::escape(QString::fromStdString(SettingWord("layer")));
    const QString key = QRegularExpression::escape(QString::fromStdString(SettingWord("key")));
    const QRegularExpression numbered(QStringLiteral("(\\b%1 \\d+ )%2 (\\d+)\\b").arg(layer, key));
    const QRegularExpressionMatch match = numbered.match(name);
    if (!match.hasMatch())
        return name;
    return QString(name).replace(match.capturedStart(), match.capturedLength(),
                                 match.captured(1) + FunctionKeyName(match.captured(2).toInt()));
}

} // namespace qx::app
