// VersionBox: a number that is shown and entered as the version of a keyboard's firmware.
#pragma once

#include "host/Firmware.h"

#include <QSpinBox>

namespace qx::app {

class VersionBox : public QSpinBox {
public:
    using QSpinBox::QSpinBox;

protected:
    [[nodiscard]] QString textFromValue(int value) const override {
        return QString::fromStdString(host::FirmwareVersionText(value));
    }
    [[nodiscard]] int valueFromText(const QString& text) const override {
        return host::FirmwareVersionOf(text.toStdString());
    }
    QValidator::State validate(QString& text, int& /*position*/) const override {
        const int version = valueFromText(text);
        if (version >= minimum() && version <= maximum())
            return QValidator::Acceptable;
        return text.isEmpty() || text.endsWith(u'.') ? QValidator::Intermediate
                                                     : QValidator::Invalid;
    }
};

} // namespace qx::app
