// QXCommonKeyboardView: the face of QXCommonKeyboard: the output delay as a slider and a number.
#pragma once

#include "qxcontrols/device/QXCommonKeyboard.h"
#include "views/Bindings.h"

#include <QWidget>

namespace qx::views {

class QXCommonKeyboardView : public QWidget {
    Q_OBJECT
public:
    // The control outlives the view.
    explicit QXCommonKeyboardView(QXCommonKeyboard& control, QWidget* parent = nullptr);

private:
    Bindings m_bindings;
    Subscription m_refreshed;
};

} // namespace qx::views
