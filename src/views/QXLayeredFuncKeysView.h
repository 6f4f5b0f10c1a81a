// QXLayeredFuncKeysView: the face of QXLayeredFuncKeys: the 24 keys of one layer, the way through
// the layers, and what the current key sends and is called. The keys are a KeyGrid named
// "funcKeys", whose keys are called "cmdFuncKey_5".
#pragma once

#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "views/Bindings.h"
#include "views/KeyGrid.h"
#include "views/SentTexts.h"

#include <QWidget>

class QLayout;

namespace qx::views {

class QXLayeredFuncKeysView : public QWidget {
    Q_OBJECT
public:
    // The control outlives the view.
    explicit QXLayeredFuncKeysView(QXLayeredFuncKeys& control, QWidget* parent = nullptr);

    [[nodiscard]] KeyGrid* Grid() const { return m_grid; }

protected:
    void changeEvent(QEvent* event) override; // other colours, other language

private:
    [[nodiscard]] QLayout* MakeLayerRow();
    [[nodiscard]] QLayout* MakeKeyRows();
    [[nodiscard]] QLayout* MakeButtonRow();
    void ShowKeys();
    [[nodiscard]] KeyCap CapOf(Integer nKey, SentTexts& texts) const;
    [[nodiscard]] QString NameOf(const FuncKeyButton& key, const QString& sequence) const;

    QXLayeredFuncKeys& m_control;
    Integer m_shownKey = -1; // as current
    KeyGrid* m_grid;
    Bindings m_bindings;
    Subscription m_refreshed;
};

} // namespace qx::views
