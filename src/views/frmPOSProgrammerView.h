// frmPOSProgrammerView: the face of frmPOSProgrammer, as a dialog.
#pragma once

#include "qxcontrols/pos/frmPOSProgrammer.h"
#include "views/Bindings.h"

#include <QDialog>

namespace qx::views {

class frmPOSProgrammerView : public QDialog {
    Q_OBJECT
public:
    // The form outlives the view; the QXPOSProgrammer that opens it has prepared it.
    explicit frmPOSProgrammerView(frmPOSProgrammer& form, QWidget* parent = nullptr);

    void reject() override; // Esc or closing the window: asks before losing changes

protected:
    void changeEvent(QEvent* event) override;

private:
    QLayout* MakeHead();
    QWidget* MakeKeys();
    QLayout* MakeBlocks();
    QLayout* MakeCurrentBlock();
    QLayout* MakeColors();
    QLayout* MakeButtons();
    QPushButton* MakeButton(const QString& name, const Button& child,
                            const Bindings::Action& clicked);
    QLabel* MakeLabel(const char* name, const Label& child);

    frmPOSProgrammer& m_form;
    Bindings m_bindings;
    Subscription m_refreshed, m_closed;
};

} // namespace qx::views
