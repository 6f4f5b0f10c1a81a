// FirmwareVersion: the versions of keyboard programs. A keyboard reports "P100" for version 1.00;
// the preferences keep it as the number 0x100.
#pragma once

#include <QString>

namespace qx::app {

// "1.00" for 0x100; a number that is not a version stays a number.
[[nodiscard]] inline QString FirmwareVersionText(int version) {
    if (version < 0)
        return QString::number(version);
    return QStringLiteral("%1.%2").arg(version >> 8, 0, 16).arg(version & 0xFF, 2, 16, QChar(u'0'));
}

// The opposite, also for the digits alone ("100"); -1 for a text that is not a version.
[[nodiscard]] inline int FirmwareVersionOf(const QString& text) {
    const qsizetype point = text.indexOf(u'.');
    bool isMajor = true;
    bool isMinor = false;
    const int major = point < 0 ? 0 : text.left(point).toInt(&isMajor, 16);
    const int minor = text.mid(point + 1).toInt(&isMinor, 16);
    return isMajor && isMinor && (point < 0 || minor <= 0xFF) ? (major << 8) + minor : -1;
}

} // namespace qx::app
