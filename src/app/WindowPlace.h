// WindowPlace: the window's position, as stored in the preferences.
#pragma once

class QWidget;

namespace qx {
class QXProgSettings;
}

namespace qx::app {

// Restores the window's position, as far as it is visible on the current screens.
void RestorePlace(QWidget& window, const QXProgSettings& preferences);
void KeepPlace(const QWidget& window, QXProgSettings& preferences);

} // namespace qx::app
