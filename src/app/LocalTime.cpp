#include "app/LocalTime.h"

#include <QDateTime>
#include <QLocale>

namespace qx::app {

QString LocalDate(const QDate& date) {
    const QLocale locale;
    QString form = locale.dateFormat(QLocale::ShortFormat);
    if (!form.contains(QLatin1String("yyyy")))
        form.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    return locale.toString(date, form);
}

QString LocalTime(const QDateTime& time) {
    const QLocale locale;
    QString form = locale.timeFormat(QLocale::LongFormat);
    form.remove(u't'); // the zone
    const QDateTime local = time.toLocalTime();
    return LocalDate(local.date()) + u' ' + locale.toString(local.time(), form.trimmed());
}

QString LocalTime(const std::string& time) {
    const QString text = QString::fromStdString(time);
    QString digits = text;
    digits.remove(QLatin1Char('-')).remove(QLatin1Char(':'));
    auto moment = QDateTime::fromString(digits.left(15), QStringLiteral("yyyyMMdd'T'HHmmss"));
    if (!moment.isValid())
        return text;
    moment.setTimeSpec(Qt::UTC);
    return LocalTime(moment);
}

} // namespace qx::app
