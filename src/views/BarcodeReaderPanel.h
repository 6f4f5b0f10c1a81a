// BarcodeReaderPanel: the part of QXBarcode for a reader: the keys sent before and after its codes.
// It shows the reader whose page the control shows.
#pragma once

#include "qxcontrols/readers/QXBarcode.h"
#include "views/Bindings.h"

#include <QWidget>

namespace qx::views {

class BarcodeReaderPanel : public QWidget {
public:
    // The control outlives the panel.
    explicit BarcodeReaderPanel(QXBarcode& control, QWidget* parent = nullptr);

private:
    QXBarcode& m_control;
    Bindings m_bindings;
    Subscription m_refreshed;
};

} // namespace qx::views
