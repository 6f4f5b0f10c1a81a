// QXFreeProgKeysView: the face of QXFreeProgKeys: the keyboard, the current key's sequence, and the
// buttons to edit it.
#pragma once

#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "views/Bindings.h"

#include <QWidget>

namespace qx::views {

class QXFreeProgKeysView : public QWidget {
    Q_OBJECT
public:
    // The control outlives the view.
    explicit QXFreeProgKeysView(QXFreeProgKeys& control, QWidget* parent = nullptr);

private:
    Bindings m_bindings;
    Subscription m_refreshed;
};

} // namespace qx::views
