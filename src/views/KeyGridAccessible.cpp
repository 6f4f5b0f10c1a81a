#include "views/KeyGridAccessible.h"

#include "views/KeyGrid.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>

#include <map>

namespace qx::views {

namespace {

int RowOf(const std::vector<KeyCap>& caps, int index) {
    for (std::size_t row = 0; row < caps.size(); ++row)
        if (caps[row].index == index)
            return static_cast<int>(row);
    return -1;
}

class KeyAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    KeyAccessible(KeyGrid* grid, int index) : m_grid(grid), m_index(index) {}

    [[nodiscard]] bool isValid() const override { return Cap() != nullptr; }
    [[nodiscard]] QObject* object() const override { return nullptr; } // keys are not widgets
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(m_grid.data());
    }
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override {
        return nullptr;
    }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override {
        return -1;
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Button; }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        const KeyCap* cap = Cap();
        if (cap == nullptr)
            return {};
        switch (kind) {
        case QAccessible::Name:
            return cap->name.isEmpty() ? cap->caption : cap->name;
        case QAccessible::Description:
            return m_grid->DescriptionOf(*cap);
        case QAccessible::DebugDescription:
            return m_grid->KeyName(m_index);
        default:
            return {};
        }
    }
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}

    [[nodiscard]] QRect rect() const override {
        if (!m_grid)
            return {};
        const QRect inGrid = m_grid->KeyRect(m_index);
        return {m_grid->mapToGlobal(inGrid.topLeft()), inGrid.size()};
    }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        const KeyCap* cap = Cap();
        if (cap == nullptr) {
            state.invalid = true;
            return state;
        }
        state.focusable = true;
        state.focused = m_grid->hasFocus() && m_grid->FocusKey() == m_index;
        state.disabled = !cap->isEnabled || !m_grid->isEnabled();
        state.selectable = true;
        state.selected = m_grid->Selects() ? m_grid->IsSelected(m_index) : cap->isCurrent;
        state.multiSelectable = state.extSelectable = m_grid->Selects();
        state.invisible = !m_grid->isVisible();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    [[nodiscard]] QStringList actionNames() const override {
        const KeyCap* cap = Cap();
        if (cap == nullptr || !cap->isEnabled)
            return {setFocusAction()};
        if (m_grid->Selects())
            return {pressAction(), toggleAction(), setFocusAction()};
        return {pressAction(), setFocusAction()};
    }
    void doAction(const QString& name) override {
        if (!isValid())
            return;
        if (name == pressAction()) {
            m_grid->Pick(m_index);
        } else if (name == toggleAction() && m_grid->Selects()) {
            m_grid->Pick(m_index, true);
        } else if (name == setFocusAction()) {
            m_grid->setFocus();
            m_grid->Reach(m_index);
        }
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString& /*name*/) const override {
        return {};
    }

private:
    [[nodiscard]] const KeyCap* Cap() const {
        if (!m_grid)
            return nullptr;
        const int row = RowOf(m_grid->Keys(), m_index);
        return row < 0 ? nullptr : &m_grid->Keys()[static_cast<std::size_t>(row)];
    }

    QPointer<KeyGrid> m_grid;
    int m_index;
};

class GridAccessible : public QAccessibleWidget {
public:
    explicit GridAccessible(KeyGrid* grid) : QAccessibleWidget(grid, QAccessible::Grouping) {}
    ~GridAccessible() override {
        for (const auto& [index, id] : m_keys)
            QAccessible::deleteAccessibleInterface(id);
    }

    [[nodiscard]] int childCount() const override {
        return static_cast<int>(Grid()->Keys().size());
    }
    [[nodiscard]] QAccessibleInterface* child(int row) const override {
        return row < 0 || row >= childCount()
                   ? nullptr
                   : Key(Grid()->Keys()[static_cast<std::size_t>(row)].index);
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        for (int row = 0; row < childCount(); ++row)
            if (this->child(row) == child)
                return row;
        return -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const int index = Grid()->KeyAt(Grid()->mapFromGlobal(QPoint(x, y)));
        return index < 0 ? nullptr : Key(index);
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        return Grid()->hasFocus() && Grid()->FocusKey() >= 0 ? Key(Grid()->FocusKey()) : nullptr;
    }

private:
    [[nodiscard]] KeyGrid* Grid() const { return static_cast<KeyGrid*>(widget()); }

    // The key's own interface, always the same one while the grid lives.
    [[nodiscard]] QAccessibleInterface* Key(int index) const {
        const auto found = m_keys.find(index);
        if (found != m_keys.end())
            return QAccessible::accessibleInterface(found->second);
        auto* key = new KeyAccessible(Grid(), index);
        m_keys[index] = QAccessible::registerAccessibleInterface(key); // takes ownership
        return key;
    }

    mutable std::map<int, QAccessible::Id> m_keys;
};

QAccessibleInterface* MakeGridAccessible(const QString& /*className*/, QObject* object) {
    auto* grid = qobject_cast<KeyGrid*>(object);
    return grid == nullptr ? nullptr : new GridAccessible(grid);
}

void Announce(KeyGrid* grid, QAccessible::Event what, int row) {
    QAccessibleEvent event(grid, what);
    event.setChild(row);
    QAccessible::updateAccessibility(&event);
}

} // namespace

void InstallKeyGridAccessible() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(MakeGridAccessible);
        return true;
    }();
    (void)isInstalled;
}

void AnnounceFocusKey(KeyGrid* grid) {
    const int row = RowOf(grid->Keys(), grid->FocusKey());
    if (row >= 0 && grid->hasFocus() && QAccessible::isActive())
        Announce(grid, QAccessible::Focus, row);
}

void AnnounceKeysChanged(KeyGrid* grid, const std::vector<KeyCap>& old) {
    if (!QAccessible::isActive())
        return;
    const std::vector<KeyCap>& now = grid->Keys();
    for (std::size_t row = 0; row < now.size(); ++row)
        if (row < old.size() && now[row].index == old[row].index && now[row].name != old[row].name)
            Announce(grid, QAccessible::NameChanged, static_cast<int>(row));
}

void AnnounceMarksChanged(KeyGrid* grid, const std::set<int>& keys) {
    if (!QAccessible::isActive())
        return;
    for (const int key : keys)
        if (const int row = RowOf(grid->Keys(), key); row >= 0)
            Announce(grid, QAccessible::DescriptionChanged, row);
}

} // namespace qx::views
