"""Inserts faults into the code, one at a time, and shows which of them the tests catch.

    tests/faults/run                     every fault
    tests/faults/run src/host            those of a folder or a file
    tests/faults/run --only device-3     those of these names
    tests/faults/run --check             only checks that each fault still has its place in the code

The faults are in the .txt files beside this script; each begins as follows:

    tests: test_driverhost test_cli:Batch*   the test programs to run, in this order, each with an
                                         optional filter for its tests

    [name] src/folder/File.cpp           a fault: the file to insert it into,
    means the effect on the user         the harm it would do,
    - code                               the lines it replaces, which must occur exactly once,
                                         whatever their indentation,
    + other code                         and the new lines (if none, lines are only removed)

The work is done in copies of the tree below build/faults, never in the tree itself. A fault is
caught if a test fails, crashes, or does not end; the slow tests are run only if no other test
catches it. With --quick only the first program of each list is run, without its slow tests. Exits
with 1 if a fault no longer has its place in the code or does not compile, or if the tests fail
without a fault; survivors alone do not count as a failure.
"""
import argparse
import collections
import dataclasses
import os
import pathlib
import queue
import re
import shutil
import signal
import subprocess
import sys
import threading
import time

PROJECT = pathlib.Path(__file__).resolve().parents[2]
SLOW = ":".join(["*FaultSweep*", "*EveryDriverCall*", "WriterSweep.*", "PowerCut.*", "DocumentBytes.*",
                 "LyingKeyboard.*", "*WhateverTheKeyboardHolds"])
CAUGHT, HUNG, SURVIVED, BROKEN = "caught", "caught, by not ending", "SURVIVED", "does not compile"


@dataclasses.dataclass
class Fault:
    name: str
    file: str
    list: str
    tests: list
    means: str = ""
    old: list = dataclasses.field(default_factory=list)
    new: list = dataclasses.field(default_factory=list)

    def put_into(self, text):
        """The text with the fault; None if its place does not occur exactly once."""
        place = re.compile(r"\n\s*".join(re.escape(line.strip()) for line in self.old))
        found = list(place.finditer(text))
        if not self.old or len(found) != 1:
            return None
        return text[:found[0].start()] + "\n".join(self.new) + text[found[0].end():]


def read_faults(file):
    faults, tests = [], []
    for number, line in enumerate(file.read_text().splitlines(), 1):
        if line.startswith("tests: "):
            tests = line.split()[1:]
        elif line.startswith("["):
            name, target = line[1:].split("] ")
            faults.append(Fault(name, target, file.stem, tests))
        elif line.startswith("means "):
            faults[-1].means = line[6:]
        elif line[:2] in ("- ", "-"):
            faults[-1].old.append(line[2:])
        elif line[:2] in ("+ ", "+"):
            faults[-1].new.append(line[2:])
        elif line and not line.startswith("#"):
            sys.exit(f"{file}:{number}: {line!r} is not a line of a fault")
    return faults


def faults_without_place(faults):
    return [fault for fault in faults
            if fault.put_into((PROJECT / fault.file).read_text()
                              if (PROJECT / fault.file).exists() else "") is None]


def asked(fault, quick):
    return fault.tests[:1] if quick else fault.tests


def fast_tests(entry):
    """The program and the filter in "program:filter", without the slow tests."""
    program, _, chosen = entry.partition(":")
    chosen = chosen or "*"
    return program, chosen + (":" if "-" in chosen else "-") + SLOW


def hear_signals():
    """A background run inherits ignored signals, but the tests raise them."""
    for each in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(each, signal.SIG_DFL)


class Copy:
    """A copy of the tree with its own build."""

    def __init__(self, number, jobs):
        self.tree = PROJECT / "build" / "faults" / str(number)
        self.build = self.tree / "build"
        self.jobs = jobs
        self.times = {}
        self.env = dict(os.environ, CCACHE_BASEDIR=str(self.tree), QT_QPA_PLATFORM="offscreen",
                        XDG_DATA_HOME=str(self.build / "data"),
                        XDG_CONFIG_HOME=str(self.build / "config"))

    def prepare(self):
        """Updates the copy from the tree; unchanged files are not built again."""
        names = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=PROJECT,
                               check=True, capture_output=True, text=True).stdout.split("\n")
        names = {name for name in names if name and (PROJECT / name).is_file()}
        for name in names:
            source, copy = PROJECT / name, self.tree / name
            if not copy.exists() or copy.read_bytes() != source.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, copy)
        for folder in ("src", "tests"):
            for file in (self.tree / folder).rglob("*"):
                if file.is_file() and str(file.relative_to(self.tree)) not in names:
                    file.unlink()
        if not (self.build / "build.ninja").exists():
            linker = ["-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld"] if shutil.which("ld.lld") else []
            subprocess.run(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja",
                            "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -g0", *linker],
                           check=True, stdout=subprocess.DEVNULL, env=self.env)

    def make(self, target):
        """Whether the target could be built, and the compiler's output."""
        done = subprocess.run(["ninja", "-C", self.build, f"-j{self.jobs}", target],
                              env=self.env, capture_output=True, text=True)
        return done.returncode == 0, done.stdout[-3000:]

    def ask(self, program, tests):
        """Runs these tests of the program: SURVIVED if all pass; and the first that failed."""
        limit = 4 * self.times[program, tests] + 60 if (program, tests) in self.times else 3600
        start = time.monotonic()
        try:
            done = subprocess.run(
                [self.build / "bin" / program, "--gtest_fail_fast", "--gtest_brief=1",
                 f"--gtest_filter={tests}"], cwd=self.build, env=self.env, timeout=limit,
                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                preexec_fn=hear_signals)
        except subprocess.TimeoutExpired:
            return HUNG, program
        if done.returncode == 0:
            self.times.setdefault((program, tests), time.monotonic() - start)
            return SURVIVED, ""
        failed = [line for line in done.stdout.decode(errors="replace").splitlines()
                  if line.startswith("[  FAILED  ] ")]
        return CAUGHT, failed[0][13:].split(" ")[0].strip(",") if failed else f"{program} crashed"

    def baseline(self, tests):
        for entry in tests:
            program, chosen = fast_tests(entry)
            built, words = self.make(program)
            result, test = self.ask(program, chosen) if built else (BROKEN, words)
            if result != SURVIVED:
                sys.exit(f"Without a fault, {program} {result}: {test}")

    def judge(self, fault, quick):
        file = self.tree / fault.file
        text = file.read_text()
        file.write_text(fault.put_into(text))
        try:
            programs = dict.fromkeys(entry.partition(":")[0] for entry in fault.tests)
            slow = [] if quick else [(program, SLOW) for program in programs]
            for program, chosen in [fast_tests(entry) for entry in asked(fault, quick)] + slow:
                built, words = self.make(program)
                if not built:
                    return BROKEN, words
                result, test = self.ask(program, chosen)
                if result != SURVIVED:
                    return result, test
            return SURVIVED, ""
        finally:
            file.write_text(text)


def run(faults, jobs, quick):
    """Judges all faults, each in the next free copy, and returns the results."""
    waiting, results = queue.SimpleQueue(), {}
    for fault in faults:
        waiting.put(fault)
    copies = [Copy(number, max(1, (os.cpu_count() or 1) // jobs)) for number in range(jobs)]

    def work(copy):
        while not waiting.empty():
            try:
                fault = waiting.get_nowait()
            except queue.Empty:
                return
            results[fault.name] = result, test = copy.judge(fault, quick)
            print(f"[{len(results)} of {len(faults)}] {fault.name}: {result} {test}", flush=True)

    for copy in copies:
        copy.prepare()
        copy.baseline(dict.fromkeys(entry for fault in faults for entry in asked(fault, quick)))
    threads = [threading.Thread(target=work, args=[copy]) for copy in copies]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    return results


def show(faults, results):
    counts = collections.defaultdict(collections.Counter)
    for fault in faults:
        counts[fault.list][results[fault.name][0]] += 1
    print(f"\n{'folder':24}{'faults':>8}{'caught':>8}{'survived':>10}{'%':>6}{'do not compile':>16}")
    for folder, count in [*counts.items(), ("all", sum(counts.values(), collections.Counter()))]:
        caught = count[CAUGHT] + count[HUNG]
        judged = caught + count[SURVIVED]
        print(f"{folder:24}{judged:8}{caught:8}{count[SURVIVED]:10}"
              f"{100 * caught // max(judged, 1):6}{count[BROKEN]:16}")
    for kind in (SURVIVED, HUNG, BROKEN):
        for fault in faults:
            if results[fault.name][0] == kind:
                print(f"{kind}: {fault.name} ({fault.file}): {fault.means}")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("files", nargs="*", help="only the faults of these folders or files")
    parser.add_argument("--only", nargs="+", default=[], metavar="NAME")
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--quick", action="store_true", help="only the first program of each list")
    parser.add_argument("--jobs", type=int, default=1, help="the number of copies that work in parallel")
    chosen = parser.parse_args()

    faults = [fault for file in sorted(pathlib.Path(__file__).parent.glob("*.txt"))
              for fault in read_faults(file)]
    for name, count in collections.Counter(fault.name for fault in faults).items():
        if count > 1:
            sys.exit(f"{name} is the name of {count} faults")
    faults = [fault for fault in faults
              if (not chosen.files or fault.file.startswith(tuple(chosen.files)))
              and (not chosen.only or fault.name in chosen.only)]
    lost = faults_without_place(faults)
    for fault in lost:
        print(f"{fault.name}: its code is not in {fault.file} exactly once")
    print(f"{len(faults) - len(lost)} faults")
    if chosen.check or not faults:
        return 1 if lost else 0
    faults = [fault for fault in faults if fault not in lost]
    results = run(faults, chosen.jobs, chosen.quick)
    show(faults, results)
    return 1 if lost or any(result == BROKEN for result, _ in results.values()) else 0


if __name__ == "__main__":
    sys.exit(main())
