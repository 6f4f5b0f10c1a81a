#include "app/WindowPlace.h"

#include "qxcontrols/settings/QXProgSettings.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace qx::app {

namespace {

// The preferences store the window's place in twips; at 96 dpi a pixel has 15.
constexpr int kTwipsPerPixel = 15;
constexpr int kLeastSize = 240; // pixels of the window that a screen must show
constexpr QSize kFirstSize(1100, 760);

enum WindowState : Integer { kNormal = 0, kMaximized = 2 };

} // namespace

void RestorePlace(QWidget& window, const QXProgSettings& preferences) {
    const QRect place(preferences.WinLeft() / kTwipsPerPixel, preferences.WinTop() / kTwipsPerPixel,
                      preferences.WinWidth() / kTwipsPerPixel,
                      preferences.WinHeight() / kTwipsPerPixel);
    const QRect visible =
        place.intersected(QGuiApplication::primaryScreen()->availableVirtualGeometry());
    if (visible.width() < kLeastSize || visible.height() < kLeastSize)
        window.resize(kFirstSize); // its screen no longer exists
    else
        window.setGeometry(visible);
    if (preferences.WinState() == kMaximized)
        window.setWindowState(Qt::WindowMaximized);
}

void KeepPlace(const QWidget& window, QXProgSettings& preferences) {
    const QRect place = window.isMaximized() ? window.normalGeometry() : window.geometry();
    const auto twips = [](int pixels) { return static_cast<Long>(pixels * kTwipsPerPixel); };
    preferences.SetWinParam(window.isMaximized() ? kMaximized : kNormal, twips(place.width()),
                            twips(place.height()), twips(place.top()), twips(place.left()));
}

} // namespace qx::app
