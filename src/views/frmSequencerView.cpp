#include "views/frmSequencerView.h"

#include "views/CaptionedRow.h"
#include "views/ChipRow.h"
#include "views/Discard.h"
#include "views/FaultLabel.h"
#include "views/HeldKeys.h"
#include "views/QXLayoutDisplayView.h"
#include "views/TextEntry.h"
#include "views/TypedCodes.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

namespace qx::views {

namespace {

constexpr int kSequenceLines = 2;

// A button that Enter in a text line does not press.
QPushButton* MakeButton() {
    auto* button = new QPushButton;
    button->setAutoDefault(false);
    return button;
}

} // namespace

frmSequencerView::frmSequencerView(frmSequencer& form, QWidget* parent)
    : QDialog(parent), m_form(form) {
    setObjectName(QStringLiteral("frmSequencer"));
    auto* keys = new QXLayoutDisplayView(form.layoutDisplay);
    auto* column = new QVBoxLayout(this);
    column->addLayout(MakeHead());
    column->addWidget(keys, 1);
    column->addLayout(MakeClicks());
    column->addSpacing(8);
    column->addLayout(MakeSequence());
    column->addWidget(MakeText());
    column->addLayout(MakeTyped());
    column->addLayout(MakeButtons());
    m_bindings.OnShow([this] { setWindowTitle(ToQt(m_form.lblCaption.Caption)); });

    auto* confirm = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this);
    connect(confirm, &QShortcut::activated, this, &frmSequencerView::Confirm);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            [&form](Qt::ApplicationState state) {
                if (state == Qt::ApplicationActive)
                    form.AppActivate();
                else
                    form.AppDeactivate();
            });
    m_refreshed = form.Refreshed.Subscribe([this] { m_bindings.ShowAll(); });
    m_closed = form.Closed.Subscribe([this] { Leave(); });
    m_bindings.ShowAll();
    keys->setFocus();
    resize(sizeHint().boundedTo(screen()->availableSize() * 9 / 10));
}

bool frmSequencerView::ShowsText() const {
    return m_form.chkShowDetails.Value == 1 || m_form.HasTyped() || !Draft();
}

QLayout* frmSequencerView::MakeHead() {
    auto* hint = new QLabel;
    auto* help = MakeButton();
    help->setObjectName(QStringLiteral("imgHelp"));
    connect(help, &QPushButton::clicked, this, [this] { m_form.imgHelp_Click(); });
    m_bindings.OnShow([this, hint, help] {
        hint->setText(ShowsText() ? tr("Click keys, press them on the keyboard, type text, or edit "
                                       "the sequence as text.")
                                  : tr("Click keys, press them on the keyboard, or type text."));
        help->setText(tr("Help"));
    });
    auto* row = new QHBoxLayout;
    row->addWidget(hint, 1);
    row->addWidget(help);
    return row;
}

QLayout* frmSequencerView::MakeClicks() {
    auto* held = new HeldKeys;
    connect(held, &HeldKeys::HeldChanged, this,
            [this](int key, bool isHeld) { m_form.Hold(static_cast<Byte>(key), isHeld); });
    m_bindings.OnShow([this, held] {
        held->ShowLayout(m_form.layoutDisplay.LayoutSource());
        held->Show(m_form.Held());
    });
    auto* twin = new QCheckBox;
    twin->setObjectName(QStringLiteral("chkTwin"));
    connect(twin, &QCheckBox::toggled, this, [this](bool isOn) { m_form.SetPressesTwin(isOn); });
    m_bindings.OnShow([this, twin] {
        twin->setText(tr("Record clicks as the keyboard reports them (press only)"));
        twin->setChecked(m_form.PressesTwin());
        twin->setVisible(static_cast<bool>(m_form.pressTwinKey));
    });
    auto* row = new QHBoxLayout;
    row->addWidget(held);
    row->addStretch(1);
    row->addWidget(twin);
    return row;
}

QLayout* frmSequencerView::MakeSequence() {
    auto* caption = new QLabel;
    auto* remaining = new QLabel;
    auto* left = new QLabel;
    auto* details = new QCheckBox;
    auto* sequence = new QPlainTextEdit;
    m_bindings.Bind(caption, QStringLiteral("lblSequence"), m_form.lblSequence);
    m_bindings.Bind(remaining, QStringLiteral("lblRemaining"), m_form.lblRemaining);
    m_bindings.Bind(details, QStringLiteral("chkShowDetails"), m_form.chkShowDetails,
                    [this] { m_form.chkShowDetails_Click(); });
    sequence->setObjectName(QStringLiteral("txtSequence"));
    sequence->setReadOnly(true);
    sequence->setTabChangesFocus(true);
    sequence->setFixedHeight(sequence->fontMetrics().lineSpacing() * kSequenceLines + 12);
    caption->setBuddy(sequence);
    m_bindings.OnShow([this, sequence, left] {
        const QString text = ToQt(m_form.txtSequence.Text);
        if (sequence->toPlainText() != text) {
            sequence->setPlainText(text);
            sequence->moveCursor(QTextCursor::End); // keeps the most recent key visible
        }
        sequence->setAccessibleName(ToQt(m_form.lblSequence.Caption));
        sequence->setVisible(!Draft()); // else there are the chips
        left->setText(tr("Codes left:"));
    });

    auto* row = new QHBoxLayout;
    row->addWidget(caption);
    row->addStretch(1);
    row->addWidget(details);
    row->addSpacing(16);
    row->addLayout(CaptionedRow(left, remaining));
    auto* column = new QVBoxLayout;
    column->addLayout(row);
    column->addWidget(MakeChips());
    column->addWidget(sequence);
    return column;
}

std::optional<SequenceDraft> frmSequencerView::Draft() const {
    const QXKeyboardLayoutData* layout = m_form.layoutDisplay.LayoutSource();
    const auto codes = m_form.Codes();
    if (layout == nullptr || !codes || std::ranges::find(*codes, 0) != codes->end())
        return {};
    SequenceDraft draft(*layout, static_cast<std::size_t>(m_form.MaxSeqSize()));
    draft.Start(*codes);
    draft.SetCaretCode(m_form.Caret());
    return draft;
}

void frmSequencerView::Rearrange(const std::function<void(SequenceDraft&)>& change) {
    std::optional<SequenceDraft> draft = Draft();
    change(*draft);
    m_form.Rearrange(draft->Codes(), draft->CaretCode());
}

QWidget* frmSequencerView::MakeChips() {
    auto* chips = new ChipRow;
    chips->setObjectName(QStringLiteral("keys"));
    // Keys are recorded as they are, so that the caret is not where Shift is held.
    connect(chips, &ChipRow::CaretMoved, this, [this](int before, int characters) {
        std::optional<SequenceDraft> draft = Draft();
        draft->SetCaret(static_cast<std::size_t>(before), static_cast<std::size_t>(characters));
        while (draft->HeldAtCaret() != 0)
            draft->StepCaret(1);
        m_form.SetCaret(draft->CaretCode());
    });
    connect(chips, &ChipRow::CaretStepped, this, [this](int by) {
        std::optional<SequenceDraft> draft = Draft();
        do
            draft->StepCaret(by);
        while (draft->HeldAtCaret() != 0);
        m_form.SetCaret(draft->CaretCode());
    });
    connect(chips, &ChipRow::Removed, this, [this](int item) {
        Rearrange([&](SequenceDraft& draft) { draft.Remove(static_cast<std::size_t>(item)); });
    });
    connect(chips, &ChipRow::RemovedBefore, this,
            [this] { Rearrange([](SequenceDraft& draft) { draft.RemoveBefore(); }); });
    connect(chips, &ChipRow::RemovedAfter, this,
            [this] { Rearrange([](SequenceDraft& draft) { draft.RemoveAfter(); }); });
    connect(chips, &ChipRow::Moved, this, [this](int item, int before) {
        Rearrange([&](SequenceDraft& draft) {
            draft.Move(static_cast<std::size_t>(item), static_cast<std::size_t>(before));
        });
    });
    m_bindings.OnShow([this, chips] {
        const std::optional<SequenceDraft> draft = Draft();
        chips->setVisible(draft.has_value());
        if (draft)
            chips->Show(draft->Items(), draft->Caret());
    });
    return chips;
}

QWidget* frmSequencerView::MakeText() {
    m_text = new TextEntry;
    m_text->SetWide(true);
    m_text->focusProxy()->installEventFilter(this);
    connect(m_text, &TextEntry::Entered, this, &frmSequencerView::Type);
    m_bindings.OnShow(
        [this] { m_text->setEnabled(m_form.layoutDisplay.LayoutSource() != nullptr); });
    return m_text;
}

bool frmSequencerView::Type(const QString& text, bool withEnter) {
    const TypedCodes typed(text, withEnter, *m_form.layoutDisplay.LayoutSource());
    m_textFault->setText(typed.fault);
    if (!typed.fault.isEmpty() || !m_form.Insert(typed.codes))
        return false;
    m_text->Empty();
    return true;
}

// Text that has not been added is not lost.
void frmSequencerView::Confirm() {
    if (m_text->Text().isEmpty() || Type(m_text->Text(), false))
        m_form.cmdOK_Click();
}

QLayout* frmSequencerView::MakeTyped() {
    auto* caption = new QLabel;
    auto* apply = MakeButton();
    auto* fault = new FaultLabel;
    m_textFault = new FaultLabel;
    auto* full = new FaultLabel;
    m_typed = new QLineEdit;
    m_typed->installEventFilter(this);
    caption->setBuddy(m_typed);
    apply->setObjectName(QStringLiteral("cmdApply"));
    fault->setWordWrap(true);
    m_bindings.Bind(m_typed, QStringLiteral("txtTyped"), m_form.txtTyped,
                    [this] { m_form.txtTyped_Change(); });
    m_bindings.Bind(fault, QStringLiteral("lblTypedFault"), m_form.lblTypedFault);
    m_bindings.Bind(full, QStringLiteral("lblSizeMsg"), m_form.lblSizeMsg);
    m_bindings.OnShow([this, fault] {
        if (m_form.TypedTooMany() != 0)
            fault->setText(tr("The text has %1 codes, only %2 fit.")
                               .arg(m_form.TypedTooMany())
                               .arg(m_form.MaxSeqSize()));
    });
    connect(m_typed, &QLineEdit::returnPressed, this, [this] { m_form.ApplyTyped(); });
    connect(apply, &QPushButton::clicked, this, [this] { m_form.ApplyTyped(); });
    m_bindings.OnShow([this, caption, apply] {
        caption->setText(tr("As &text:"));
        apply->setText(tr("&Apply"));
        apply->setEnabled(m_form.txtTyped.Enabled);
        m_typed->setPlaceholderText(tr("for example: Ctrl+C Enter ^Enter"));
        m_typed->setToolTip(
            tr("Keys by their names. A presses a key, ^A releases it, Ctrl+C presses and "
               "releases both, {30} is a code."));
    });

    auto* typed = new QWidget; // the text with the released keys
    auto* row = new QHBoxLayout(typed);
    row->setContentsMargins({});
    row->addWidget(caption);
    row->addWidget(m_typed, 1);
    row->addWidget(apply);
    m_bindings.OnShow([this, typed] { typed->setVisible(ShowsText()); });
    auto* message = new QGridLayout; // only one is shown at a time
    message->addWidget(fault, 0, 0);
    message->addWidget(full, 0, 0);
    message->addWidget(m_textFault, 0, 0);
    m_bindings.OnShow([this] {
        if (m_form.lblTypedFault.Visible || m_form.lblSizeMsg.Visible)
            m_textFault->clear();
    });
    auto* column = new QVBoxLayout;
    column->addWidget(typed);
    column->addLayout(message);
    return column;
}

QLayout* frmSequencerView::MakeButtons() {
    auto* row = new QHBoxLayout;
    for (const int index : {0, 1}) {
        auto* clean = MakeButton();
        m_bindings.Bind(clean, ChildName("cmdClean", index),
                        m_form.cmdClean[static_cast<std::size_t>(index)],
                        [this, index] { m_form.cmdClean_Click(static_cast<Integer>(index)); });
        row->addWidget(clean);
    }
    row->addStretch(1);
    auto* ok = MakeButton();
    auto* cancel = MakeButton();
    m_bindings.Bind(ok, QStringLiteral("cmdOK"), m_form.cmdOK, [this] { Confirm(); });
    m_bindings.Bind(cancel, QStringLiteral("cmdCancel"), m_form.cmdCancel,
                    [this] { m_form.cmdCancel_Click(); });
    row->addWidget(ok);
    row->addWidget(cancel);
    return row;
}

void frmSequencerView::Leave() {
    m_form.Form_Unload();
    done(m_form.OK() ? Accepted : Rejected);
}

void frmSequencerView::reject() {
    if (Discard::IsAgreed(this, m_form.IsChanged() || !m_text->Text().isEmpty()))
        m_form.LeaveWithCancel();
}

bool frmSequencerView::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate)
        m_form.Form_Activate();
    else if (event->type() == QEvent::WindowDeactivate)
        m_form.Form_Deactivate();
    return QDialog::event(event);
}

void frmSequencerView::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        m_bindings.ShowAll();
}

bool frmSequencerView::eventFilter(QObject* watched, QEvent* event) {
    // A window that is only deactivated keeps its focus for its return.
    const bool isFocus = event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut;
    if ((watched == m_typed || watched == m_text->focusProxy()) && isFocus &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
        if (event->type() == QEvent::FocusIn)
            m_form.txtTyped_GotFocus();
        else
            m_form.txtTyped_LostFocus();
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace qx::views
