// BarcodeEditor: the face of QXBarcode in an application: the table of codes, and beside it the
// keys sent by each reader.
#pragma once

#include "qxcontrols/readers/QXBarcode.h"

#include <QTabWidget>

namespace qx::views {

class BarcodeEditor : public QTabWidget {
    Q_OBJECT
public:
    // The control outlives the editor; its host has set its texts.
    explicit BarcodeEditor(QXBarcode& control, QWidget* parent = nullptr);

    // Gives the focus to a setting of a code, by the name of its widget, and scrolls to it.
    void Reveal(const QString& name);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void ShowPage();

    QXBarcode& m_control;
    Integer m_code = BP_CommonSettings; // the last page that was not a reader's
    Subscription m_refreshed;
};

} // namespace qx::views
