// QXPosView: the face of QXPos: the POS keys by block, their number, and access to the programmer.
#pragma once

#include "qxcontrols/pos/QXPos.h"
#include "views/Bindings.h"

#include <QWidget>

namespace qx::views {

class QXPosView : public QWidget {
    Q_OBJECT
public:
    // The control outlives the view.
    explicit QXPosView(QXPos& control, QWidget* parent = nullptr);

private:
    Bindings m_bindings;
    Subscription m_refreshed;
};

} // namespace qx::views
