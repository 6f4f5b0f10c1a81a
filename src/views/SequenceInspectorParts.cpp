// What the inspector consists of, where that is, and its texts.
#include "views/ChipRow.h"
#include "views/FaultLabel.h"
#include "views/KeyPalette.h"
#include "views/LineIcon.h"
#include "views/SequenceInspector.h"
#include "views/TextEntry.h"
#include "views/TitleFont.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

namespace qx::views {

namespace {

constexpr int kTightSpacing = 5; // pixels

QToolButton* MakeTool(const char* name, const char* icon) {
    auto* button = new QToolButton;
    button->setObjectName(QString::fromLatin1(name));
    button->setIcon(LineIcon(QString::fromLatin1(icon)));
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    return button;
}

} // namespace

void SequenceInspector::MakeParts() {
    m_title = new QLabel;
    m_left = new QLabel;
    m_hint = new QLabel;
    m_editor = new QWidget;
    m_chips = new ChipRow;
    m_back = MakeTool("removeLast", "previous");
    m_clear = MakeTool("clearKeys", "delete");
    m_record = MakeTool("record", "record");
    m_device = MakeTool("recordDevice", "keyboard");
    m_text = new TextEntry;
    m_recording = new QLabel;
    m_fault = new FaultLabel;
    m_palette = new KeyPalette;
    m_receivedCaption = new QLabel;
    m_warningRow = new QWidget;
    m_received = new QLineEdit;
    m_warningIcon = new QLabel;
    m_warnings = new QLabel;

    m_title->setFont(TitleFont(m_title->font()));
    m_title->setTextFormat(Qt::PlainText);
    m_title->setObjectName(QStringLiteral("keyTitle"));
    m_hint->setObjectName(QStringLiteral("inspectorHint"));
    m_left->setObjectName(QStringLiteral("codesLeft"));
    m_chips->setObjectName(QStringLiteral("keys"));
    m_received->setObjectName(QStringLiteral("receivedCodes"));
    m_warnings->setObjectName(QStringLiteral("warnings"));
    for (QToolButton* recorder : {m_record, m_device}) {
        recorder->setCheckable(true);
        recorder->installEventFilter(this);
    }
    m_device->hide();
    m_received->setReadOnly(true);
    m_receivedCaption->setBuddy(m_received);
    for (QLabel* label : {m_hint, m_recording, m_warnings}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
    }
    m_fault->setWordWrap(true);
    for (QToolButton* tool : {m_back, m_clear})
        tool->setToolButtonStyle(Qt::ToolButtonIconOnly);
}

void SequenceInspector::PlaceParts() {
    auto* head = new QHBoxLayout;
    head->addWidget(m_title);
    head->addStretch(1);
    head->addWidget(m_left);
    auto* tools = new QHBoxLayout;
    for (QToolButton* tool : {m_back, m_clear, m_record, m_device})
        tools->addWidget(tool);
    tools->addStretch(1);
    auto* received = new QHBoxLayout;
    received->addWidget(m_receivedCaption);
    received->addWidget(m_received, 1);
    auto* warnings = new QHBoxLayout(m_warningRow);
    warnings->setContentsMargins({});
    warnings->addWidget(m_warningIcon, 0, Qt::AlignTop);
    warnings->addWidget(m_warnings, 1);
    auto* remarks = new QGridLayout; // one at a time, in the room that the first keeps
    remarks->addWidget(m_fault, 0, 0);
    remarks->addWidget(m_warningRow, 0, 0);
    auto* sent = new QVBoxLayout(m_editor);
    sent->setContentsMargins({});
    sent->addWidget(m_chips);
    sent->addLayout(received);
    sent->addLayout(tools);
    sent->addWidget(m_recording);
    sent->addWidget(m_text);
    sent->addLayout(remarks);
    m_sent = new QVBoxLayout;
    m_sent->addLayout(head);
    m_sent->addWidget(m_hint);
    m_sent->addWidget(m_editor);
    m_sent->addStretch(1);
    m_columns = new QVBoxLayout(this);
    m_columns->addLayout(m_sent);
    m_columns->addWidget(m_palette);
    SetWide(false);
}

QSize SequenceInspector::minimumSizeHint() const {
    const int least =
        std::max(m_editor->minimumSizeHint().width(), m_palette->minimumSizeHint().width());
    return QWidget::minimumSizeHint().expandedTo({least, 0});
}

void SequenceInspector::SetWide(bool isWide) {
    m_columns->setDirection(isWide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_columns->setStretch(0, isWide ? 1 : 0);
    m_columns->setStretch(1, 1);
    m_text->SetWide(isWide);
    for (QLayout* layout : {static_cast<QLayout*>(m_sent), m_editor->layout()})
        layout->setSpacing(isWide ? kTightSpacing : -1); // there is no height to give away
}

// The button keeps its width when its text becomes "Stop".
void SequenceInspector::ShowRecorder(QToolButton& recorder, const QString& idle, const char* icon) {
    recorder.setText(idle);
    recorder.setMinimumWidth(recorder.sizeHint().width());
    if (recorder.isChecked())
        recorder.setText(tr("Stop"));
    recorder.setIcon(LineIcon(QString::fromLatin1(recorder.isChecked() ? "stop" : icon)));
}

void SequenceInspector::ShowTexts() {
    m_back->setText(tr("Back"));
    m_back->setToolTip(tr("Remove what is before the caret"));
    m_clear->setText(tr("Clear"));
    m_clear->setToolTip(tr("Remove all keys of the sequence"));
    ShowRecorder(*m_record, tr("Record"), "record");
    m_record->setToolTip(
        tr("Record the keys that you press on this PC's keyboard, until you press the Pause key"));
    ShowRecorder(*m_device, tr("From the device"), "keyboard");
    m_device->setToolTip(tr("Record the keys that you press on the connected keyboard, which does "
                            "not type meanwhile"));
    m_recording->setText(m_device->isChecked() ? tr("Press keys on the connected keyboard.")
                                               : tr("Press keys; end with the Pause key."));
    m_receivedCaption->setText(tr("The PC &receives:"));
    m_received->setToolTip(tr("Each press and release in order; ^ marks a release"));
    ShowDraft();
}

} // namespace qx::views
