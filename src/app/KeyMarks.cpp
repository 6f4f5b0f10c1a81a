#include "app/KeyMarks.h"

#include "app/KeyEdits.h"
#include "app/KeyboardState.h"
#include "app/Workbench.h"
#include "host/SequenceLint.h"
#include "views/KeyGrid.h"

namespace qx::app {

// A control refreshes for another layer and for each selected key; what is never sent changes with
// the document alone.
KeyMarks::KeyMarks(const KeyboardState& state, KeyEdits& edits, views::KeyGrid& grid, QWidget& view)
    : m_state(state), m_edits(edits), m_grid(grid), m_view(view),
      m_refreshed(edits.Section().Control().Refreshed.Subscribe([this] { ShowChanged(); })) {
    const auto showAll = [this] {
        ShowChanged();
        ShowUnsent();
    };
    QObject::connect(&state, &KeyboardState::Changed, &grid, showAll);
    showAll();
}

void KeyMarks::ShowChanged() {
    const std::string_view section = m_edits.Section().Info().key;
    std::set<int> keys;
    for (const views::KeyCap& cap : m_grid.Keys())
        if (m_state.IsKeyChanged(section, cap.index))
            keys.insert(cap.index);
    m_grid.SetMarked(std::move(keys), tr("Changed, and not yet written to the keyboard"));
    m_edits.Bench().Faces().Of(section).MarkChanges(
        m_view, [&](const std::string& element) { return m_state.IsChanged(section, element); });
}

void KeyMarks::ShowUnsent() {
    Workbench& bench = m_edits.Bench();
    SectionFace& face = bench.Faces().Of(m_edits.Section().Info().key);
    const std::vector<host::Section*> sections = bench.WantedSections();
    std::set<int> keys;
    for (const views::KeyCap& cap : m_grid.Keys()) {
        if (cap.state != views::KeyState::Programmed)
            continue;
        if (const auto at = face.PositionOf(cap.index);
            at && host::LintSender(bench.Configuration(), sections, m_edits.Section(), at->code,
                                   at->posKey))
            keys.insert(cap.index);
    }
    m_grid.SetStruck(std::move(keys), tr("Never sent: another module programs this key"));
}

} // namespace qx::app
