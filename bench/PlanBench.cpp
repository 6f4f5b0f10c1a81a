// What planning a write costs beside an upload, and what undo costs for each edit.

#include "host/History.h"
#include "host/Session.h"
#include "host/WritePlan.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "simulator/SimulatedDriver.h"
#include "support/TempFolder.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <malloc.h>

namespace {

using namespace qx;

// A keyboard with every module, with settings in every slot when it is full.
struct BenchSession {
    BenchSession() {
        layout.SetLayoutPath(QX_LAYOUTS);
        if (!layout.OpenLayoutByName("us.qxl"))
            std::abort();
        session.Open();
    }

    // Writes a sequence as long as they go, of this code, into every slot of the configuration.
    void FillAll(host::Configuration& configuration, Byte code) {
        auto sections = session.SectionsIn(configuration);
        session.Upload(sections);
        auto& layered =
            dynamic_cast<QXLayeredFuncKeys&>(configuration.Find("layeredFuncKeys")->Control());
        for (Integer layer = 0; layer < kFuncKeyLayers; ++layer)
            for (Integer key = 0; key < FuncKeyLayer::kKeys; ++key) {
                layered.Layer(layer).GetKey(key).SetBytes(
                    std::string(kFuncKeySlotSize, static_cast<char>(code)));
                layered.Layer(layer).SetKeyDesc(key, std::string(kFuncKeyDescLength, 'x'));
            }
    }

    test::TempFolder folder{test::TempFolder::InMemory()};
    sim::SimulatedDriver driver{folder / "keyboard.qxk", "full"};
    QXKeyboardLayoutData layout;
    host::Session session{driver};
};

// The keyboard is empty, or has as much as function keys can hold.
void Upload(benchmark::State& state) {
    BenchSession keyboard;
    host::Configuration configuration(Platform(), &keyboard.layout, nullptr);
    if (state.range(0) != 0) {
        keyboard.FillAll(configuration, 30);
        keyboard.session.Download(keyboard.session.SectionsIn(configuration));
    }
    for (auto _ : state) {
        auto sections = keyboard.session.SectionsIn(configuration);
        keyboard.session.Upload(sections);
        benchmark::DoNotOptimize(configuration.Write(sections).ToText());
    }
}
BENCHMARK(Upload)->ArgName("full")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// Every function key changes, its sequence and its description.
void PlanOfAFullChange(benchmark::State& state) {
    BenchSession keyboard;
    host::Configuration configuration(Platform(), &keyboard.layout, nullptr);
    host::Configuration scratch(Platform(), &keyboard.layout, nullptr);
    keyboard.FillAll(configuration, 30);
    const auto sections = keyboard.session.SectionsIn(configuration);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            host::Planner(keyboard.session.ReadContent(scratch), scratch).ForSettings(sections));
}
BENCHMARK(PlanOfAFullChange)->Unit(benchmark::kMillisecond);

void NamingItsSettings(benchmark::State& state) {
    BenchSession keyboard;
    host::Configuration configuration(Platform(), &keyboard.layout, nullptr);
    host::Configuration scratch(Platform(), &keyboard.layout, nullptr);
    keyboard.FillAll(configuration, 30);
    host::Planner planner(keyboard.session.ReadContent(scratch), scratch);
    host::WritePlan plan = planner.ForSettings(keyboard.session.SectionsIn(configuration));
    for (auto _ : state)
        planner.NameSettings(plan);
}
BENCHMARK(NamingItsSettings)->Unit(benchmark::kMillisecond);

// One key is edited while every other has all that it can have.
void NoteOfOneKey(benchmark::State& state) {
    BenchSession keyboard;
    host::Configuration configuration(Platform(), &keyboard.layout, nullptr);
    keyboard.FillAll(configuration, 30);
    host::History history(configuration);
    auto& control =
        dynamic_cast<QXLayeredFuncKeys&>(configuration.Find("layeredFuncKeys")->Control());
    std::size_t notes = 0;
    const auto edit = [&] {
        control.Layer(3).GetKey(5).SetBytes(std::string(128, static_cast<char>(31 + notes % 2)));
        control.SetDataChanged(true);
        history.Seal();
        history.Note();
        ++notes;
    };
    edit();
    const auto before = mallinfo2().uordblks;
    for (int i = 0; i < 100; ++i)
        edit();
    state.counters["bytes"] = static_cast<double>(mallinfo2().uordblks - before) / 100;
    for (auto _ : state)
        edit();
}
BENCHMARK(NoteOfOneKey)->Unit(benchmark::kMicrosecond);

void NoteOfASelection(benchmark::State& state) {
    BenchSession keyboard;
    host::Configuration configuration(Platform(), &keyboard.layout, nullptr);
    host::History history(configuration);
    for (auto _ : state)
        benchmark::DoNotOptimize(history.Note());
}
BENCHMARK(NoteOfASelection)->Unit(benchmark::kMicrosecond);

} // namespace
