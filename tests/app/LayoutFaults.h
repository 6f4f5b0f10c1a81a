// LayoutFaults: where a window is cut, crowded or crooked: texts without room, widgets over one
// another or beyond their parent, content that scrolls sideways.
#pragma once

#include <QStringList>

class QWidget;

namespace qx::test {

// One line for each fault among the visible widgets: where it is and what is wrong.
[[nodiscard]] QStringList LayoutFaults(const QWidget& window);

} // namespace qx::test
