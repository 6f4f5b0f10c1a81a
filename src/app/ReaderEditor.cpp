#include "app/ReaderEditor.h"

#include "app/DeviceKeys.h"
#include "app/InPlaceEditor.h"
#include "app/SettingWords.h"
#include "app/Workbench.h"
#include "host/SequenceSlots.h"
#include "views/SequenceInspector.h"
#include "views/SequenceLabel.h"

#include <QKeyEvent>

namespace qx::app {

using views::SequenceInspector;
using views::SequenceLabel;

ReaderEditor::ReaderEditor(Workbench& workbench, std::string sectionKey, QWidget& view,
                           SequenceInspector& inspector)
    : m_workbench(workbench), m_section(std::move(sectionKey)), m_view(view),
      m_inspector(inspector) {
    m_inspector.SetFinders(
        [this](const std::vector<Byte>& codes) {
            return InPlaceEditor::WarningsAbout(codes, m_workbench.Layout());
        },
        [this] { return Received(); });
    for (auto* label : view.findChildren<SequenceLabel*>()) {
        label->installEventFilter(this);
        connect(label, &SequenceLabel::Entered, this, [this, label] {
            m_chosen = label;
            ShowChosen();
        });
    }
    connect(&m_inspector, &SequenceInspector::Changed, this, &ReaderEditor::Put);
    new DeviceKeys(workbench, m_inspector);
    for (const auto signal : {&Workbench::KeyboardChanged, &Workbench::LayoutChanged})
        connect(&workbench, signal, this, &ReaderEditor::ShowLayout);
    m_refreshed = workbench.Configuration().Find(m_section)->Control().Refreshed.Subscribe(
        [this] { ShowChosen(); });
    ShowLayout();
}

void ReaderEditor::ShowLayout() {
    m_inspector.ShowLayout(&m_workbench.Layout());
    ShowChosen();
}

SequenceLabel* ReaderEditor::Chosen() const {
    if (m_chosen != nullptr && m_chosen->isVisibleTo(&m_view))
        return m_chosen;
    for (auto* label : m_view.findChildren<SequenceLabel*>())
        if (label->isVisibleTo(&m_view))
            return label;
    return nullptr;
}

std::string ReaderEditor::PlaceOf(const SequenceLabel& label) const {
    const std::string element =
        m_workbench.Faces().Of(m_section).PlaceOfLabel(label.objectName().toStdString());
    return "/" + m_section + "/" + element;
}

void ReaderEditor::ShowChosen() {
    const SequenceLabel* label = Chosen();
    for (auto* each : m_view.findChildren<SequenceLabel*>())
        each->SetEdited(each == label);
    m_inspector.setVisible(label != nullptr);
    if (label == nullptr)
        return;
    host::Section& section = *m_workbench.Configuration().Find(m_section);
    const std::string place = PlaceOf(*label);
    const host::SequenceSlots found(section, {place});
    const host::SequenceSlots::Slot* slot = found.Find(place);
    const auto settings = m_workbench.Configuration().List(section, {place}, host::Listed::All);
    if (slot == nullptr || settings.empty())
        return m_inspector.Show({});
    m_inspector.Show(SequenceInspector::Edited{
        place, NameInSection(settings.front().name),
        std::vector<Byte>(slot->codes.begin(), slot->codes.end()),
        static_cast<std::size_t>(slot->capacity),
        label->isEnabledTo(&m_view) ? QString() : tr("This keyboard cannot read this track.")});
}

std::optional<QString> ReaderEditor::Received() const {
    const SequenceLabel* label = Chosen();
    if (label == nullptr)
        return std::nullopt;
    const auto switches =
        m_workbench.Configuration().List(*m_workbench.Configuration().Find(m_section),
                                         {PlaceOf(*label) + "Enabled"}, host::Listed::All);
    const bool isOff =
        !switches.empty() && switches.front().value.kind == host::SettingValue::Kind::Off;
    return isOff ? std::optional(tr("Nothing: it is switched off.")) : std::nullopt;
}

void ReaderEditor::Put(const std::vector<Byte>& codes, bool goesOn) {
    host::Section& section = *m_workbench.Configuration().Find(m_section);
    const std::string place = PlaceOf(*Chosen());
    host::SequenceSlots found(section, {place});
    const host::SequenceSlots::Wanted wanted{{place, codes}};
    if (!found.RefusalOf(wanted))
        m_workbench.Edit(
            section, [&] { found.Put(wanted); }, goesOn);
}

// Unless the user prefers that typing opens the editor.
bool ReaderEditor::eventFilter(QObject* /*watched*/, QEvent* event) {
    return event->type() == QEvent::KeyPress && m_workbench.Preferences().AdvancedEditor() == 0 &&
           m_inspector.StartTyping(static_cast<const QKeyEvent&>(*event));
}

} // namespace qx::app
