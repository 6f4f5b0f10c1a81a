// Parsing a keyboard layout, and redrawing all keys as data, compared with copying the same keys.

#include "qxcontrols/keys/KeyboardSequences.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"

#include <benchmark/benchmark.h>

namespace {

using namespace qx;

void ParseLayout(benchmark::State& state) {
    QXKeyboardLayoutData layout;
    layout.SetLayoutPath(QX_LAYOUTS);
    for (auto _ : state)
        benchmark::DoNotOptimize(layout.OpenLayoutByName("us.qxl"));
}
BENCHMARK(ParseLayout)->Unit(benchmark::kMicrosecond);

void RedrawAllKeys(benchmark::State& state) {
    QXKeyboardLayoutData layout;
    layout.SetLayoutPath(QX_LAYOUTS);
    if (!layout.OpenLayoutByName("us.qxl"))
        state.SkipWithError("no layout");
    QXLayoutDisplay display;
    display.SetLayoutSource(&layout);
    const KeyboardSequences sequences;
    for (auto _ : state)
        display.ReloadKeysSettings(sequences);
}
BENCHMARK(RedrawAllKeys)->Unit(benchmark::kMicrosecond);

void CopyAllKeys(benchmark::State& state) {
    QXKeyboardLayoutData layout;
    layout.SetLayoutPath(QX_LAYOUTS);
    if (!layout.OpenLayoutByName("us.qxl"))
        state.SkipWithError("no layout");
    QXLayoutDisplay display;
    display.SetLayoutSource(&layout);
    display.ReloadKeysSettings(KeyboardSequences());
    auto copy = display.cmdKey;
    for (auto _ : state) {
        copy = display.cmdKey;
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(CopyAllKeys)->Unit(benchmark::kMicrosecond);

} // namespace
