// frmSequencerView: the face of frmSequencer, as a dialog.
#pragma once

#include "qxcontrols/keys/SequenceDraft.h"
#include "qxcontrols/keys/frmSequencer.h"
#include "views/Bindings.h"

#include <QDialog>

#include <functional>
#include <optional>

namespace qx::views {

class ChipRow;
class TextEntry;

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
    [[nodiscard]] bool ShowsText() const; // with the released keys
    QLayout* MakeClicks();
    QLayout* MakeSequence();
    QWidget* MakeChips();
    QWidget* MakeText();
    QLayout* MakeTyped();
    QLayout* MakeButtons();
    void Leave();
    // The sequence as chips; none where it has codes that no keyboard stores, or without a layout.
    [[nodiscard]] std::optional<SequenceDraft> Draft() const;
    void Rearrange(const std::function<void(SequenceDraft&)>& change);
    bool Type(const QString& text, bool withEnter); // false if it could not be added
    void Confirm();

    frmSequencer& m_form;
    QLineEdit* m_typed = nullptr;
    TextEntry* m_text = nullptr;
    QLabel* m_textFault = nullptr;
    Bindings m_bindings;
    Subscription m_refreshed, m_closed;
};

} // namespace qx::views
