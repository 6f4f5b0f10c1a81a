// VersionBox: a number that is shown and typed as the version of a keyboard's program.
#pragma once

#include "app/FirmwareVersion.h"

#include <QSpinBox>

namespace qx::app {

class VersionBox : public QSpinBox {
public:
    using QSpinBox::QSpinBox;

protected:
    [[nodiscard]] QString textFromValue(int value) const override {
        return FirmwareVersionText(value);
    }
    [[nodiscard]] int valueFromText(const QString& text) const override {
        return FirmwareVersionOf(text);
    }
    QValidator::State validate(QString& text, int& /*position*/) const override {
        const int version = FirmwareVersionOf(text);
        if (version >= minimum() && version <= maximum())
            return QValidator::Acceptable;
        return text.isEmpty() || text.endsWith(u'.') ? QValidator::Intermediate
                                                     : QValidator::Invalid;
    }
};

} // namespace qx::app
