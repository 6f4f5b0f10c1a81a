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
constexpr QSize kFirstSize(1366, 768);
constexpr QSize kAroundWindow(40, 80); // its frame, and what lies at the edges of the screen

enum WindowState : Integer { kNormal = 0, kMaximized = 2 };

} // namespace

void RestorePlace(QWidget& window, const QXProgSettings& preferences) {
    const QRect place(preferences.WinLeft() / kTwipsPerPixel, preferences.WinTop() / kTwipsPerPixel,
                      preferences.WinWidth() / kTwipsPerPixel,
                      preferences.WinHeight() / kTwipsPerPixel);
    const QScreen& screen = *QGuiApplication::primaryScreen();
    const QRect visible = place.intersected(screen.availableVirtualGeometry());
    if (visible.width() < kLeastSize ||
        visible.height() < kLeastSize) // none yet, or its screen is gone
        window.resize(kFirstSize.boundedTo(screen.availableSize() - kAroundWindow));
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
