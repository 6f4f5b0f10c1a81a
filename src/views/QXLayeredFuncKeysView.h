// QXLayeredFuncKeysView: the face of QXLayeredFuncKeys: the 24 keys of one layer, the layers as
// tabs, and what the current key sends and is called. The keys are a KeyGrid named "funcKeys",
// whose keys are called "cmdFuncKey_5".
#pragma once

#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "views/Bindings.h"
#include "views/KeyGrid.h"
#include "views/SentTexts.h"

#include <QWidget>

#include <set>

class QLayout;
class QTabBar;
class QVBoxLayout;

namespace qx::views {

class QXLayeredFuncKeysView : public QWidget {
    Q_OBJECT
public:
    // The control outlives the view.
    explicit QXLayeredFuncKeysView(QXLayeredFuncKeys& control, QWidget* parent = nullptr);

    [[nodiscard]] KeyGrid* Grid() const { return m_grid; }
    // A widget of the host's, below the tabs of the layers.
    void AddBelowTabs(QWidget* widget);
    // Layers with a dot on their tab, and its meaning.
    void SetMarkedLayers(const std::set<int>& layers, const QString& meaning);

signals:
    void LayerMenuRequested(int layer, const QPoint& globalAt);

protected:
    void changeEvent(QEvent* event) override; // other colours, other language

private:
    [[nodiscard]] QLayout* MakeLayerTabs();
    [[nodiscard]] QLayout* MakeKeyRows();
    [[nodiscard]] QLayout* MakeButtonRow();
    void ShowKeys();
    void ShowLayers();
    [[nodiscard]] KeyCap CapOf(Integer nKey, SentTexts& texts) const;
    [[nodiscard]] QString NameOf(const FuncKeyButton& key, const QString& sequence) const;

    QXLayeredFuncKeys& m_control;
    Integer m_shownKey = -1; // as current
    KeyGrid* m_grid;
    QTabBar* m_tabs;
    std::set<int> m_markedLayers;
    QString m_markMeaning;
    QVBoxLayout* m_belowTabs;
    Bindings m_bindings;
    Subscription m_refreshed;
};

} // namespace qx::views
