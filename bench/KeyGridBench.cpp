// A full repaint of the keyboard on a screen of 1920 by 1080: again unchanged, after picking
// another key, and in another size; and a key that is selected in a window.

#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"
#include "views/KeyGrid.h"
#include "views/QXFreeProgKeysView.h"
#include "views/QXLayoutDisplayView.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <benchmark/benchmark.h>

namespace {

using namespace qx;
using namespace qx::views;

constexpr QSize kScreen(1920, 1080);

// A keyboard of which every other key is programmed.
struct Keyboard {
    Keyboard() {
        layout.SetLayoutPath(QX_LAYOUTS);
        isOpened = layout.OpenLayoutByName("us.qxl");
        for (Integer key = 75; key <= 140; key = static_cast<Integer>(key + 2))
            sequences.Key(key).AddByte(30);
        display.SetLayoutSource(&layout);
        display.SetCurrProgKey(76);
        display.ReloadKeysSettings(sequences);
    }

    bool isOpened = false;
    QXKeyboardLayoutData layout;
    KeyboardSequences sequences;
    QXLayoutDisplay display;
};

std::vector<KeyCap> Keys() {
    Keyboard keyboard;
    if (!keyboard.isOpened)
        return {};
    return QXLayoutDisplayView(keyboard.display).Grid()->Keys();
}

enum Before { Nothing, OtherCurrentKey, NewSize };

void Repaint(benchmark::State& state) {
    std::vector<KeyCap> keys = Keys();
    if (keys.empty())
        state.SkipWithError("no layout");
    KeyGrid grid;
    grid.SetKeys(keys);
    grid.resize(kScreen);
    grid.ensurePolished();
    QImage screen(kScreen, QImage::Format_RGB32);
    int width = kScreen.width();
    for (auto _ : state) {
        if (state.range(0) == OtherCurrentKey) {
            keys[100].isCurrent = !keys[100].isCurrent;
            grid.SetKeys(keys);
        }
        if (state.range(0) == NewSize)
            grid.resize(width = width == kScreen.width() ? width - 1 : width + 1, kScreen.height());
        grid.render(&screen);
        benchmark::DoNotOptimize(screen.constBits());
    }
}
BENCHMARK(Repaint)
    ->ArgName("before")
    ->DenseRange(Nothing, NewSize)
    ->UseRealTime()
    ->MeasureProcessCPUTime() // Qt fills areas with several threads
    ->Unit(benchmark::kMillisecond);

// The minimum for any widget of that size: one filled rectangle.
void FillScreen(benchmark::State& state) {
    QImage screen(kScreen, QImage::Format_RGB32);
    for (auto _ : state) {
        QPainter painter(&screen);
        painter.fillRect(screen.rect(), Qt::gray);
        benchmark::DoNotOptimize(screen.constBits());
    }
}
BENCHMARK(FillScreen)->UseRealTime()->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
