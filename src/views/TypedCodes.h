// TypedCodes: the codes of a text that a user types, or why a layout cannot type it.
#pragma once

#include "qxcontrols/common/Types.h"

#include <QCoreApplication>
#include <QString>

#include <vector>

namespace qx {
class QXKeyboardLayoutData;
}

namespace qx::views {

struct TypedCodes {
    Q_DECLARE_TR_FUNCTIONS(TypedCodes)
public:
    // Of the keys that type the text and, where wanted, Enter after it.
    TypedCodes(const QString& text, bool withEnter, const QXKeyboardLayoutData& layout);

    std::vector<Byte> codes;
    QString fault; // names the first character that no key can type; `codes` is then empty
};

} // namespace qx::views
