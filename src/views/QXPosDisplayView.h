// QXPosDisplayView: the face of QXPosDisplay: the keys of the POS module, 7 rows of 15, as a
// KeyGrid named "posDisplay", whose keys are called "cmdPOS_20".
#pragma once

#include "qxcontrols/pos/QXPosDisplay.h"
#include "views/Bindings.h"
#include "views/KeyGrid.h"

#include <functional>

namespace qx::views {

class QXPosDisplayView : public QWidget {
    Q_OBJECT
public:
    // The display outlives the view.
    explicit QXPosDisplayView(QXPosDisplay& display, QWidget* parent = nullptr);

    // What is engraved on a key, and what the key sends; the display itself knows neither.
    using TextOfKey = std::function<QString(Integer nKeyIndex)>;
    void SetTexts(TextOfKey legend, TextOfKey sequence);

    [[nodiscard]] KeyGrid* Grid() const { return m_grid; }
    void ShowKeys();

protected:
    void changeEvent(QEvent* event) override; // other colours, other language

private:
    [[nodiscard]] KeyCap CapOf(Integer nKeyIndex) const;

    QXPosDisplay& m_display;
    KeyGrid* m_grid;
    TextOfKey m_legend;
    TextOfKey m_sequence;
    Subscription m_refreshed;
};

} // namespace qx::views
