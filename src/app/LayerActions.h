// LayerActions: layers of function keys named, copied and swapped, from a button below their tabs
// and from the menu of each tab.
#pragma once

#include "qxcontrols/common/Event.h"
#include "qxcontrols/common/Types.h"

#include <QObject>

class QLineEdit;
class QMenu;

namespace qx {
class QXLayeredFuncKeys;
}
namespace qx::views {
class QXLayeredFuncKeysView;
}

namespace qx::app {

class KeyEdits;

class LayerActions : public QObject {
    Q_OBJECT
public:
    // It belongs to the view. The others outlive it.
    LayerActions(KeyEdits& edits, views::QXLayeredFuncKeysView& view, QXLayeredFuncKeys& control);

private:
    void Fill(QMenu& menu, Integer nLayer);
    [[nodiscard]] QString TitleOf(Integer nLayer) const; // "3 Drinks"
    void Copy(Integer nFrom, Integer nTo);
    void Swap(Integer nOne, Integer nOther);
    void Rename();

    KeyEdits& m_edits;
    QXLayeredFuncKeys& m_control;
    QLineEdit* m_name;
    Subscription m_refreshed;
};

} // namespace qx::app
