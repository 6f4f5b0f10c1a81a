// The cost of planning a write compared with an upload, and the cost of undo for each edit.

#include "FilledConfiguration.h"
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

// A keyboard with every module.
struct BenchSession {
    BenchSession() {
        layout.SetLayoutPath(QX_LAYOUTS);
        if (!layout.OpenLayoutByName("us.qxl"))
            std::abort();
        session.Open();
    }

    // Fills every slot of every module.
    void FillAll(host::Configuration& configuration, Byte code) {
        auto sections = session.SectionsIn(configuration);
        session.Upload(sections);
        bench::Fill(configuration, 100, code);
    }

    test::TempFolder folder{test::TempFolder::InMemory()};
    sim::SimulatedDriver driver{folder / "keyboard.qxk", "full"};
    QXKeyboardLayoutData layout;
    host::Session session{driver};
};

// The keyboard is empty or completely filled.
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

// All keys of all modules change.
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

// One key is edited while all others are completely filled.
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

// Edits of the longest sequences, all over the layers, and the undoing of all steps that are kept.
void TenThousandEdits(benchmark::State& state) {
    BenchSession keyboard;
    host::Configuration configuration(Platform(), &keyboard.layout, nullptr);
    keyboard.FillAll(configuration, 30);
    auto& control =
        dynamic_cast<QXLayeredFuncKeys&>(configuration.Find("layeredFuncKeys")->Control());
    for (auto _ : state) {
        host::History history(configuration);
        const auto before = mallinfo2().uordblks;
        for (int edit = 0; edit < 10000; ++edit) {
            const auto layer = static_cast<Integer>(edit % kFuncKeyLayers);
            const auto key = static_cast<Integer>(edit / kFuncKeyLayers % FuncKeyLayer::kKeys);
            control.Layer(layer).GetKey(key).SetBytes(
                std::string(128, static_cast<char>(1 + edit % 126)));
            control.SetDataChanged(true);
            history.Seal();
            history.Note();
        }
        state.counters["bytes"] = static_cast<double>(mallinfo2().uordblks - before);
        int undone = 0;
        for (; history.CanUndo(); ++undone)
            history.Undo();
        state.counters["steps"] = undone;
    }
}
BENCHMARK(TenThousandEdits)->Unit(benchmark::kMillisecond)->Iterations(1);

void NoteOfASelection(benchmark::State& state) {
    BenchSession keyboard;
    host::Configuration configuration(Platform(), &keyboard.layout, nullptr);
    host::History history(configuration);
    for (auto _ : state)
        benchmark::DoNotOptimize(history.Note());
}
BENCHMARK(NoteOfASelection)->Unit(benchmark::kMicrosecond);

} // namespace
