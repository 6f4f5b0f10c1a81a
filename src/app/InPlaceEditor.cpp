#include "app/InPlaceEditor.h"

#include "app/DeviceKeys.h"
#include "app/LintWords.h"
#include "app/Workbench.h"

namespace qx::app {

using views::KeyGrid;
using views::SequenceInspector;

InPlaceEditor::InPlaceEditor(KeyEdits& edits, KeyGrid& grid, SequenceInspector& inspector)
    : m_edits(edits), m_grid(grid), m_inspector(inspector),
      m_refreshed(edits.Section().Control().Refreshed.Subscribe([this] { ShowSelected(); })) {
    m_inspector.SetWarnings([this](const std::vector<Byte>& codes) {
        return WarningsAbout(codes, m_edits.Bench().Layout());
    });
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

} // namespace qx::app
