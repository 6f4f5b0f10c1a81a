#include "views/frmSequencerView.h"

#include "views/Discard.h"
#include "views/FaultLabel.h"
#include "views/QXLayoutDisplayView.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

namespace qx::views {

namespace {

constexpr int kSequenceLines = 3;

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
    column->addWidget(MakeTwin());
    column->addSpacing(8);
    column->addLayout(MakeSequence());
    column->addLayout(MakeTyped());
    column->addLayout(MakeButtons());
    m_bindings.OnShow([this] { setWindowTitle(ToQt(m_form.lblCaption.Caption)); });

    auto* confirm = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this);
    connect(confirm, &QShortcut::activated, this, [&form] { form.cmdOK_Click(); });
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

QLayout* frmSequencerView::MakeHead() {
    auto* hint = new QLabel;
    auto* help = MakeButton();
    help->setObjectName(QStringLiteral("imgHelp"));
    connect(help, &QPushButton::clicked, this, [this] { m_form.imgHelp_Click(); });
    m_bindings.OnShow([hint, help] {
        hint->setText(tr("Click keys, press them on the keyboard, or type the sequence as text."));
        help->setText(tr("Help"));
    });
    auto* row = new QHBoxLayout;
    row->addWidget(hint, 1);
    row->addWidget(help);
    return row;
}

QWidget* frmSequencerView::MakeTwin() {
    auto* twin = new QCheckBox;
    twin->setObjectName(QStringLiteral("chkTwin"));
    connect(twin, &QCheckBox::toggled, this, [this](bool isOn) { m_form.SetPressesTwin(isOn); });
    m_bindings.OnShow([this, twin] {
        twin->setText(tr("Record clicks as the keyboard reports them (press only)"));
        twin->setChecked(m_form.PressesTwin());
        twin->setVisible(static_cast<bool>(m_form.pressTwinKey));
    });
    return twin;
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
        left->setText(tr("Codes left:"));
    });

    auto* row = new QHBoxLayout;
    row->addWidget(caption);
    row->addStretch(1);
    row->addWidget(details);
    row->addSpacing(16);
    row->addWidget(left);
    row->addWidget(remaining);
    auto* column = new QVBoxLayout;
    column->addLayout(row);
    column->addWidget(sequence);
    return column;
}

QLayout* frmSequencerView::MakeTyped() {
    auto* caption = new QLabel;
    auto* apply = MakeButton();
    auto* fault = new FaultLabel;
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
        m_typed->setPlaceholderText(tr("for example: Ctrl+C Enter"));
        m_typed->setToolTip(
            tr("Keys by their names. A presses a key, ^A releases it, Ctrl+C presses and "
               "releases both, {30} is a code."));
    });

    auto* row = new QHBoxLayout;
    row->addWidget(caption);
    row->addWidget(m_typed, 1);
    row->addWidget(apply);
    auto* message = new QGridLayout; // only one is shown at a time
    message->addWidget(fault, 0, 0);
    message->addWidget(full, 0, 0);
    auto* column = new QVBoxLayout;
    column->addLayout(row);
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
    m_bindings.Bind(ok, QStringLiteral("cmdOK"), m_form.cmdOK, [this] { m_form.cmdOK_Click(); });
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
    if (Discard::IsAgreed(this, m_form.IsChanged()))
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
    if (watched == m_typed && isFocus &&
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
