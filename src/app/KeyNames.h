// KeyNames: the layered function keys as their page names them. Documents and the layers below
// count them from 0.
#pragma once

#include <QString>

namespace qx::app {

// "F6" for key 5 of a layer.
[[nodiscard]] inline QString FunctionKeyName(int key) {
    return QStringLiteral("F%1").arg(key + 1);
}

// The name of a setting or of what a key sends, with "layer 3 F6" in place of "layer 3 key 5".
[[nodiscard]] QString WithFunctionKeyNames(const QString& name);

} // namespace qx::app
