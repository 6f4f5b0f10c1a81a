#include "views/SequenceInspector.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/SequenceText.h"
#include "views/Bindings.h"
#include "views/ChipRow.h"
#include "views/FaultLabel.h"
#include "views/KeyPalette.h"
#include "views/LineIcon.h"
#include "views/PcKeys.h"
#include "views/TextEntry.h"
#include "views/TypedCodes.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QToolButton>

namespace qx::views {

SequenceInspector::SequenceInspector(QWidget* parent) : QWidget(parent) {
    MakeParts();
    PlaceParts();
    connect(m_chips, &ChipRow::CaretMoved, this, [this](int before, int characters) {
        m_draft->SetCaret(static_cast<std::size_t>(before), static_cast<std::size_t>(characters));
        ShowDraft();
    });
    connect(m_chips, &ChipRow::CaretStepped, this, [this](int by) {
        m_draft->StepCaret(by);
        ShowDraft();
    });
    connect(m_chips, &ChipRow::Removed, this, [this](int item) {
        m_draft->Remove(static_cast<std::size_t>(item));
        Report(true);
    });
    connect(m_chips, &ChipRow::RemovedBefore, this, [this] {
        m_draft->RemoveBefore();
        Report(true);
    });
    connect(m_chips, &ChipRow::RemovedAfter, this, [this] {
        m_draft->RemoveAfter();
        Report(true);
    });
    connect(m_back, &QToolButton::clicked, m_chips, &ChipRow::RemovedBefore);
    connect(m_chips, &ChipRow::Moved, this, [this](int item, int before) {
        m_draft->Move(static_cast<std::size_t>(item), static_cast<std::size_t>(before));
        Report(true);
    });
    connect(m_clear, &QToolButton::clicked, this, [this] {
        m_draft->Clear();
        Report(true);
    });
    for (QToolButton* recorder : {m_record, m_device})
        connect(recorder, &QToolButton::toggled, this,
                [this, recorder](bool isOn) { Record(*recorder, isOn); });
    connect(m_text, &TextEntry::Entered, this, &SequenceInspector::Type);
    connect(m_palette, &KeyPalette::KeyChosen, this, &SequenceInspector::Choose);
    connect(m_palette, &KeyPalette::HeldChanged, this, [this](int key, bool isHeld) {
        if (m_draft)
            m_draft->Hold(static_cast<Byte>(key), isHeld);
    });
    ShowTexts();
    Show({});
}

void SequenceInspector::Show(const std::optional<Edited>& edited) {
    const bool isSame = edited && m_edited && m_draft && edited->place == m_edited->place &&
                        edited->capacity == m_edited->capacity && edited->refusal.isEmpty() &&
                        edited->codes == m_draft->Codes();
    if (!edited || !m_edited || edited->place != m_edited->place)
        m_text->Empty(); // else it is still to be added
    m_edited = edited;
    if (isSame) {
        ShowDraft();
        return;
    }
    m_draft.reset();
    StopRecording();
    m_fault->clear();
    m_recording->hide();
    m_palette->Release();
    if (edited && edited->refusal.isEmpty() && m_layout != nullptr) {
        m_draft.emplace(*m_layout, edited->capacity);
        m_draft->Start(edited->codes);
    }
    ShowDraft();
    m_received->setCursorPosition(0);
}

void SequenceInspector::ShowLayout(const QXKeyboardLayoutData* layout) {
    m_layout = layout;
    m_palette->ShowKeys(layout);
    m_draft.reset(); // it is in the words of the old one
    Show(std::optional(m_edited));
}

void SequenceInspector::TakeFocus() {
    m_text->setFocus(Qt::ShortcutFocusReason);
}

void SequenceInspector::StartRecording() {
    m_recordedFrom = QApplication::focusWidget();
    if (m_draft)
        m_record->setChecked(true);
}

// The space bar and Enter have their own meaning on keys and buttons. Control and Alt together
// are AltGr.
bool SequenceInspector::StartTyping(const QKeyEvent& event) {
    const QString text = event.text();
    const auto modifiers = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    const bool types =
        text.size() == 1 && text[0].isPrint() && !text[0].isSpace() &&
        (modifiers == Qt::NoModifier || modifiers == (Qt::ControlModifier | Qt::AltModifier));
    if (!types || !m_draft || !isVisible())
        return false;
    m_text->setFocus(Qt::OtherFocusReason);
    m_text->Insert(text);
    return true;
}

void SequenceInspector::SetFinders(Warn warn, Receive receive) {
    m_warn = std::move(warn);
    m_receive = std::move(receive);
    ShowDraft();
}

void SequenceInspector::ShowDraft() {
    m_title->setText(m_edited ? m_edited->title : tr("No key selected"));
    m_hint->setText(!m_edited ? tr("Select a key to see and change what it sends.")
                              : m_edited->refusal);
    m_title->setVisible(m_edited || isEnabled());
    m_hint->setVisible(!m_draft && isEnabled());
    for (QWidget* part : std::initializer_list<QWidget*>{m_editor, m_left, m_palette})
        part->setVisible(m_draft.has_value());
    if (!m_draft)
        return;
    m_chips->Show(m_draft->Items(), m_draft->Caret());
    m_left->setText(tr("Codes left: %1").arg(m_draft->CodesLeft()));
    m_back->setEnabled(m_draft->CaretCode() > 0);
    m_clear->setEnabled(!m_draft->Codes().empty());
    const auto received = m_receive ? m_receive() : std::nullopt;
    const QString sent = ToQt(SequenceToText(m_draft->Codes(), *m_layout));
    m_received->setText(received.value_or(sent));
    if (m_received->text() != sent)
        m_received->setCursorPosition(0);
    const QStringList warnings = m_warn ? m_warn(m_draft->Codes()) : QStringList();
    m_warnings->setText(warnings.join(u'\n'));
    ShowFault(m_fault->text());
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_warningIcon->setPixmap(
        LineIcon(QStringLiteral("warning")).pixmap(QSize(size, size), devicePixelRatioF()));
}

void SequenceInspector::ShowFault(const QString& text) {
    m_fault->setText(text);
    m_fault->setVisible(!text.isEmpty());
    m_warningRow->setVisible(text.isEmpty() && !m_warnings->text().isEmpty());
}

// Reports the changed draft, or that something did not fit into it.
void SequenceInspector::Report(bool hasFitted) {
    ShowFault(hasFitted ? QString() : tr("There is no room for more keys."));
    if (!hasFitted)
        return;
    ShowDraft();
    emit Changed(m_draft->Codes(), m_hasRecorded);
}

void SequenceInspector::Choose(int key) {
    const bool hasFitted = m_draft->Press(static_cast<Byte>(key));
    m_palette->Release();
    Report(hasFitted);
}

void SequenceInspector::Type(const QString& text, bool withEnter) {
    const TypedCodes typed(text, withEnter, *m_layout);
    if (!typed.fault.isEmpty())
        return ShowFault(typed.fault);
    const bool hasFitted = m_draft->Insert(typed.codes);
    if (hasFitted)
        m_text->Empty();
    Report(hasFitted);
}

void SequenceInspector::OfferDevice(bool isOffered) {
    m_device->setVisible(isOffered);
}

void SequenceInspector::StopRecording() {
    for (QToolButton* recorder : {m_record, m_device})
        recorder->setChecked(false);
}

void SequenceInspector::Record(QToolButton& recorder, bool isOn) {
    m_hasRecorded = false;
    m_pressed.clear();
    if (isOn) {
        (&recorder == m_record ? m_device : m_record)->setChecked(false);
        recorder.setFocus();
    } else {
        m_recordedFrom.clear();
    }
    const bool isRecording = m_record->isChecked() || m_device->isChecked();
    m_recording->setVisible(isRecording);
    m_text->setVisible(!isRecording); // the hint has its room
    ShowTexts();
    if (&recorder == m_device)
        emit DeviceWanted(isOn);
}

void SequenceInspector::TakeRecorded(Byte code) {
    Report(m_draft->Insert({code}));
    m_hasRecorded = true;
}

void SequenceInspector::TakeFromDevice(Long lCode) {
    if (lCode > 0 && lCode <= 0xFF)
        TakeRecorded(static_cast<Byte>(lCode));
    else
        ShowFault(tr("The keyboard reported key %1, which no sequence can have.").arg(lCode));
}

bool SequenceInspector::eventFilter(QObject* watched, QEvent* event) {
    auto* recorder = qobject_cast<QToolButton*>(watched);
    if (recorder != nullptr && recorder->isChecked() && event->type() == QEvent::FocusOut)
        recorder->setChecked(false);
    if (recorder != m_record || !m_record->isChecked() || !m_draft)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept(); // the key is recorded, whatever it is a shortcut for
        return true;
    }
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return QWidget::eventFilter(watched, event);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.key() == Qt::Key_Pause) {
        const QPointer<QWidget> from = m_recordedFrom;
        m_record->setChecked(false);
        if (from != nullptr)
            from->setFocus(Qt::OtherFocusReason);
        return true;
    }
    const Byte position = PositionCodeOf(key);
    if (position == 0 || key.isAutoRepeat())
        return true;
    const bool isRelease = event->type() == QEvent::KeyRelease;
    if (!isRelease)
        m_pressed.insert(position);
    else if (m_pressed.erase(position) == 0)
        return true; // of a key that began the recording
    TakeRecorded(static_cast<Byte>(position + (isRelease ? kRelease : Integer{0})));
    return true;
}

void SequenceInspector::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    ShowDraft(); // another page may have changed what the PC receives
}

void SequenceInspector::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange || event->type() == QEvent::PaletteChange)
        ShowTexts();
    else if (event->type() == QEvent::EnabledChange)
        ShowDraft();
}

} // namespace qx::views
