#include "app/LocalTime.h"

#include <QDateTime>
#include <QLocale>

namespace qx::app {

QString LocalTime(const std::string& time) {
    const QString text = QString::fromStdString(time);
    QString digits = text;
    digits.remove(QLatin1Char('-')).remove(QLatin1Char(':'));
    auto moment = QDateTime::fromString(digits.left(15), QStringLiteral("yyyyMMdd'T'HHmmss"));
    if (!moment.isValid())
        return text;
    moment.setTimeSpec(Qt::UTC);
    return QLocale().toString(moment.toLocalTime(), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

} // namespace qx::app
