// QXBarcodeView: the face of QXBarcode: the list of pages, and beside it the options and code
// lengths of a symbology or the header and terminator of a reader.
#pragma once

#include "qxcontrols/readers/QXBarcode.h"
#include "views/Bindings.h"

#include <QWidget>

namespace qx::views {

class QXBarcodeView : public QWidget {
    Q_OBJECT
public:
    // The control outlives the view.
    explicit QXBarcodeView(QXBarcode& control, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    [[nodiscard]] QWidget* MakeOptionPage();

    QXBarcode& m_control;
    Bindings m_bindings;
    Subscription m_refreshed;
};

} // namespace qx::views
