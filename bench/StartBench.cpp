// The run time of `qxconf identify`, compared with a one-line program.

#include "support/TempFolder.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <vector>

extern char** environ;

namespace {

// Runs the program and discards its output; true if it succeeded.
bool RunProgram(std::vector<std::string> arguments) {
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error =
        posix_spawn(&process, pointers[0], &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = -1;
    return error == 0 && waitpid(process, &status, 0) == process && status == 0;
}

void StartOf(benchmark::State& state, const std::vector<std::string>& arguments) {
    for (auto _ : state)
        if (!RunProgram(arguments))
            state.SkipWithError("the program failed");
}

void StartQxconfIdentify(benchmark::State& state) {
    const qx::test::TempFolder folder;
    const std::string file = (folder / "keyboard.qxk").string();
    StartOf(state, {QX_BIN "/qxconf", "--keyboard", file, "--model", "full", "identify"});
}
BENCHMARK(StartQxconfIdentify)->Unit(benchmark::kMicrosecond)->UseRealTime();

void StartOneLineProgram(benchmark::State& state) {
    StartOf(state, {QX_BIN "/qxonelineprogram"});
}
BENCHMARK(StartOneLineProgram)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace
