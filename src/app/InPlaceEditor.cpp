#include "app/InPlaceEditor.h"

#include "app/DeviceKeys.h"
#include "app/LintWords.h"
#include "app/SettingWords.h"
#include "app/TestDriveTexts.h"
#include "app/Workbench.h"
#include "host/KeySenders.h"
#include "simulator/TestDrive.h"
#include "views/Bindings.h"

namespace qx::app {

using views::KeyGrid;
using views::SequenceInspector;

InPlaceEditor::InPlaceEditor(KeyEdits& edits, KeyGrid& grid, SequenceInspector& inspector)
    : m_edits(edits), m_grid(grid), m_inspector(inspector),
      m_refreshed(edits.Section().Control().Refreshed.Subscribe([this] { ShowSelected(); })) {
    m_inspector.SetFinders([this](const std::vector<Byte>& codes) { return Warnings(codes); },
                           [this] { return Received(); });
    QObject::connect(&m_inspector, &SequenceInspector::Changed, &m_inspector,
                     [this](const std::vector<Byte>& codes, bool goesOn) {
                         m_edits.Put({{m_grid.Selected().front(), {codes}}}, goesOn);
                     });
    QObject::connect(&m_grid, &KeyGrid::SelectionChanged, &m_inspector, [this] { ShowSelected(); });
    new DeviceKeys(m_edits.Bench(), m_inspector);
    // Another keyboard may have another layout.
    for (const auto signal : {&Workbench::KeyboardChanged, &Workbench::LayoutChanged})
        QObject::connect(&m_edits.Bench(), signal, &m_inspector, [this] { ShowLayout(); });
    ShowLayout();
}

void InPlaceEditor::ShowLayout() {
    m_inspector.ShowLayout(&m_edits.Bench().Layout());
    ShowSelected();
}

void InPlaceEditor::ShowSelected() {
    const std::vector<int> keys = m_edits.Senders(m_grid.Selected());
    if (keys.size() != 1)
        return m_inspector.Show({});
    const KeyEdits::Sent sent = m_edits.SentBy(keys.front());
    m_inspector.Show(SequenceInspector::Edited{
        m_edits.PlaceOf(keys.front()), m_edits.SenderName(keys.front()), sent.codes,
        static_cast<std::size_t>(sent.capacity),
        sent.capacity == 0 ? tr("This key cannot be programmed.") : QString()});
}

QStringList InPlaceEditor::WarningsAbout(const std::vector<Byte>& codes,
                                         const QXKeyboardLayoutData& layout) {
    QStringList warnings;
    const std::vector<Integer> all(codes.begin(), codes.end());
    for (const host::SequenceWarning& warning : host::LintSequence(all, &layout))
        warnings += WarningText(warning, layout);
    return warnings;
}

std::optional<SectionFace::Position> InPlaceEditor::Position() const {
    const std::vector<int> keys = m_edits.Senders(m_grid.Selected());
    if (keys.size() != 1)
        return std::nullopt;
    return m_edits.Bench().Faces().Of(m_edits.Section().Info().key).PositionOf(keys.front());
}

// From the test drive's rules, applied to the document.
std::optional<QString> InPlaceEditor::Received() const {
    const auto position = Position();
    if (!position)
        return std::nullopt;
    const auto sections = m_edits.Bench().WantedSections();
    const QXKeyboardLayoutData& layout = m_edits.Bench().Layout();
    const KeyModules modules = host::ModulesOf(sections, position->code);
    sim::Reception reception;
    for (const bool isReleased : {false, true}) {
        sim::Reception stroke;
        sim::AddStroke(stroke, modules, layout, {position->code, isReleased}, position->posKey);
        reception.Append(stroke);
    }
    if (reception.stretches.empty())
        return RemarkTextOf(reception.remarks.front());
    const sim::Stretch& stretch = reception.stretches.front();
    const QString content = views::ToQt(ContentText(stretch, layout));
    const auto sent = host::SentBy(sections, position->code, position->posKey);
    return sent && sent->section != &m_edits.Section()
               ? tr("%1 sends: %2")
                     .arg(NameText(m_edits.Bench().Configuration().NameOf(*sent->section,
                                                                          sent->element)),
                          content)
               : content;
}

QStringList InPlaceEditor::Warnings(const std::vector<Byte>& codes) const {
    Workbench& workbench = m_edits.Bench();
    if (const auto position = Position(); position && !codes.empty())
        if (const auto warning =
                host::LintSender(workbench.Configuration(), workbench.WantedSections(),
                                 m_edits.Section(), position->code, position->posKey))
            return {WarningText(*warning, workbench.Layout())};
    return WarningsAbout(codes, workbench.Layout());
}

} // namespace qx::app
