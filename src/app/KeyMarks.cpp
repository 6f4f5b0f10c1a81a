#include "app/KeyMarks.h"

#include "app/KeyEdits.h"
#include "app/KeyboardState.h"
#include "app/Workbench.h"
#include "host/SequenceLint.h"
#include "views/KeyGrid.h"

namespace qx::app {

// The keys that a page shows change with its control.
KeyMarks::KeyMarks(const KeyboardState& state, KeyEdits& edits, views::KeyGrid& grid, QWidget& view)
    : m_state(state), m_edits(edits), m_grid(grid), m_view(view),
      m_refreshed(edits.Section().Control().Refreshed.Subscribe([this] { Show(); })) {
    QObject::connect(&state, &KeyboardState::Changed, &grid, [this] { Show(); });
    Show();
}

void KeyMarks::Show() {
    const std::string_view section = m_edits.Section().Info().key;
    Workbench& bench = m_edits.Bench();
    SectionFace& face = bench.Faces().Of(section);
    const std::vector<host::Section*> sections = bench.WantedSections();
    std::set<int> changed;
    std::set<int> unsent;
    for (const views::KeyCap& cap : m_grid.Keys()) {
        if (m_state.IsKeyChanged(section, cap.index))
            changed.insert(cap.index);
        if (cap.state != views::KeyState::Programmed)
            continue;
        if (const auto at = face.PositionOf(cap.index);
            at && host::LintSender(bench.Configuration(), sections, m_edits.Section(), at->code,
                                   at->posKey))
            unsent.insert(cap.index);
    }
    m_grid.SetMarked(std::move(changed), tr("Changed, and not yet written to the keyboard"));
    m_grid.SetStruck(std::move(unsent), tr("Never sent: another module programs this key"));
    face.MarkChanges(
        m_view, [&](const std::string& element) { return m_state.IsChanged(section, element); });
}

} // namespace qx::app
