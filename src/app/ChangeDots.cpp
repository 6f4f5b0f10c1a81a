#include "app/ChangeDots.h"

#include "app/KeyEdits.h"
#include "app/KeyboardState.h"
#include "app/Workbench.h"
#include "views/KeyGrid.h"

namespace qx::app {

// The keys that a page shows change with its control.
ChangeDots::ChangeDots(const KeyboardState& state, KeyEdits& edits, views::KeyGrid& grid,
                       QWidget& view)
    : m_state(state), m_edits(edits), m_grid(grid), m_view(view),
      m_refreshed(edits.Section().Control().Refreshed.Subscribe([this] { Show(); })) {
    QObject::connect(&state, &KeyboardState::Changed, &grid, [this] { Show(); });
    Show();
}

void ChangeDots::Show() {
    const std::string_view section = m_edits.Section().Info().key;
    std::set<int> keys;
    for (const views::KeyCap& cap : m_grid.Keys())
        if (m_state.IsKeyChanged(section, cap.index))
            keys.insert(cap.index);
    m_grid.SetMarked(std::move(keys), tr("Changed, and not yet written to the keyboard"));
    m_edits.Bench().Faces().Of(section).MarkChanges(
        m_view, [&](const std::string& element) { return m_state.IsChanged(section, element); });
}

} // namespace qx::app
