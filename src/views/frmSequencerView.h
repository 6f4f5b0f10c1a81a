// frmSequencerView: the face of frmSequencer, as a dialog.
#pragma once

#include "qxcontrols/keys/frmSequencer.h"
#include "views/Bindings.h"

#include <QDialog>

class QBoxLayout;

namespace qx::views {

class frmSequencerView : public QDialog {
    Q_OBJECT
public:
    // The form outlives the view; the QXSequencer that opens it has prepared it.
    explicit frmSequencerView(frmSequencer& form, QWidget* parent = nullptr);

    void reject() override; // Esc or closing the window: asks before losing changes

protected:
    bool event(QEvent* event) override; // the form's activation
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override; // focus of the typed text

private:
    QLayout* MakeHead();
    QWidget* MakeTwin();
    QLayout* MakeSequence();
    QLayout* MakeTyped();
    QLayout* MakeButtons();
    void Leave();

    frmSequencer& m_form;
    QLineEdit* m_typed = nullptr;
    Bindings m_bindings;
    Subscription m_refreshed, m_closed;
};

} // namespace qx::views
