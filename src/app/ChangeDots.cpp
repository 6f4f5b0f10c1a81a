#include "app/ChangeDots.h"

#include "app/KeyEdits.h"
#include "app/KeyboardState.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "views/KeyGrid.h"
#include "views/QXLayeredFuncKeysView.h"

namespace qx::app {

// The keys of another layer are shown by the control alone.
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
    auto* layered = qobject_cast<views::QXLayeredFuncKeysView*>(&m_view);
    if (layered == nullptr)
        return;
    std::set<int> layers;
    for (Integer layer = 0; layer < kFuncKeyLayers; ++layer)
        if (m_state.IsChanged(section, "keys[" + std::to_string(layer) + "]"))
            layers.insert(layer);
    layered->SetMarkedLayers(layers, tr("Has changes that are not yet written to the keyboard"));
}

} // namespace qx::app
