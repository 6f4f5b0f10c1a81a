// WindowPlace: where the window stands, as the preferences keep it.
#pragma once

class QWidget;

namespace qx {
class QXProgSettings;
}

namespace qx::app {

// Puts the window where it was, as far as today's screens show it.
void RestorePlace(QWidget& window, const QXProgSettings& preferences);
void KeepPlace(const QWidget& window, QXProgSettings& preferences);

} // namespace qx::app
