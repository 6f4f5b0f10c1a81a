# Copyright (c) 2026 The QXControls authors
# MIT License (see LICENSE)
"""The modules with a qxconf that gives a test's answers: the results that they report.

Run by tests/fleet/run, which has the collection where Python finds it.
"""

from __future__ import annotations

import base64
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

MODULES = "ansible_collections.qxcontrols.keyboards.plugins.modules."

# Each call uses the next answer: the arguments that it must have, and the action. @PID@ is the
# process, @NOW@ the time.
FAKE = f"""#!{sys.executable}
import datetime, json, os, pathlib, signal, subprocess, sys, time
here = pathlib.Path(sys.argv[0]).parent
answers = json.loads((here / "answers").read_text())
with open(here / "calls", "a") as calls:
    print(json.dumps(sys.argv[1:]), file=calls)
if not answers:
    sys.exit("called once too often")
answer = answers.pop(0)
(here / "answers").write_text(json.dumps(answers))
if any(each not in sys.argv for each in answer["needs"]):
    sys.exit(f"not called as expected: {{sys.argv}} has not all of {{answer['needs']}}")
(here / "document").write_bytes(pathlib.Path(sys.argv[-1]).read_bytes() if "download" in sys.argv else b"")
now = datetime.datetime.utcnow().isoformat(timespec="milliseconds") + "Z"
pid = (here / "pid").read_text() if (here / "pid").exists() else str(os.getpid())
if "download" in sys.argv or answer.get("remember"):
    (here / "pid").write_text(str(os.getpid()))
out = answer["out"].replace("@PID@", pid).replace("@NOW@", now)
sys.stdout.buffer.write(out.encode("utf-8", "surrogateescape"))
sys.stderr.write(answer.get("err", ""))
sys.stdout.flush()
if answer.get("hangs"):
    child = subprocess.Popen(["sleep", "1000"])
    (here / "child").write_text(str(child.pid))
    time.sleep(1000)
if answer["status"] < 0:
    os.kill(os.getpid(), -answer["status"])
sys.exit(answer["status"])
"""

SETTING = {
    "setting": "output delay",
    "place": "/commonKeyboard/outputDelay",
    "from": "6",
    "to": "9",
}
WRITTEN = {"schema": 1, "written": True, "bytesSent": 3, "backup": "K/T-4-1", "settings": [SETTING]}
PLAN = {"schema": 1, "dryRun": True, "bytesToSend": 3, "settings": [SETTING]}
NOTHING = {"schema": 1, "written": False, "bytesSent": 0, "backup": "", "settings": []}
NO_RECEIPTS = {"schema": 1, "receipts": []}
NO_WRITES = {"schema": 1, "onRecord": []}


def answer(out: object, *needs: str, status: int = 0, **more) -> dict:
    text = out if isinstance(out, str) else json.dumps(out)
    return {"out": text, "needs": list(needs), "status": status, **more}


def error(code: str, **more) -> dict:
    return {"schema": 1, "error": {"code": code, "message": f"{code} it is", **more}}


class ModuleTest(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.fake = self.folder / "qxconf"
        self.fake.write_text(FAKE)
        self.fake.chmod(0o755)

    def run_module(self, *answers: dict, module: str = "keyboard", check=False, **options) -> dict:
        for name in ("calls", "pid"):
            (self.folder / name).unlink(missing_ok=True)
        (self.folder / "answers").write_text(json.dumps(answers))
        arguments = {"executable": str(self.fake), "timeout": 20, "_ansible_check_mode": check}
        if module == "keyboard":
            arguments.update(src="/documents/till.json", content=coded(b"{}"))
        arguments.update(options)
        ran = subprocess.run(
            [sys.executable, "-m", MODULES + module],
            input=json.dumps({"ANSIBLE_MODULE_ARGS": arguments}),
            capture_output=True,
            text=True,
            env={**os.environ, "TZ": "Asia/Tokyo"},
        )
        self.assertEqual(ran.stderr, "")
        result = json.loads(ran.stdout)
        self.assertEqual(ran.returncode, 1 if result.get("failed") else 0)
        left = json.loads((self.folder / "answers").read_text())
        self.assertEqual(left, [], f"not asked for; the result was {result}")
        return result

    def calls(self) -> list[list[str]]:
        return [json.loads(line) for line in (self.folder / "calls").read_text().splitlines()]


def coded(data: bytes) -> str:
    return base64.b64encode(data).decode()


class Results(ModuleTest):
    def test_a_write_has_changed_something_and_comes_with_its_own_receipt(self):
        receipts = [{"backup": b, "bytesSent": n} for b, n in (("K/T-4-2", 8), ("K/T-4-1", 3))]
        result = self.run_module(
            answer(WRITTEN, "--json", "download", "till.json", err="an identifier is given\n"),
            answer({"schema": 1, "receipts": receipts}, "receipts"),
        )
        self.assertEqual((result["changed"], result["keyboard_state"]), (True, "as wanted"))
        self.assertEqual((result["bytes_sent"], result["receipt"]["bytesSent"]), (3, 3))
        self.assertEqual(result["warnings"], ["an identifier is given"])
        self.assertEqual(result["diff"]["before"], "output delay: 6\n")
        self.assertEqual(result["diff"]["after"], "output delay: 9\n")

        result = self.run_module(answer(WRITTEN), answer("no receipts", "receipts"))
        self.assertEqual((result["changed"], result["receipt"]), (True, None))
        self.assertIn("the receipt cannot be read", result["warnings"][0])

        result = self.run_module(answer(NOTHING, "download"))
        self.assertEqual((result["changed"], result["receipt"]), (False, None))
        self.assertEqual(result["diff"]["before"] + result["diff"]["after"], "")

    def test_check_mode_only_plans(self):
        result = self.run_module(answer(PLAN, "download", "--dry-run"), check=True)
        self.assertEqual((result["changed"], result["keyboard_state"]), (True, "differs"))
        plan = {**PLAN, "bytesToSend": 0, "settings": []}
        result = self.run_module(answer(plan, "--dry-run"), check=True)
        self.assertEqual((result["changed"], result["keyboard_state"]), (False, "as wanted"))

    def test_options_and_values_arrive_as_they_are(self):
        values = {"till": "04 2=\n", "delay": 9, "on": True, "empty": ""}
        result = self.run_module(
            answer(NOTHING, "--set=till=04 2=\n", "--set=delay=9", "--set=on=true", "--set=empty="),
            variables=coded(json.dumps(values).encode()),
            content=coded(b"\xff{"),
            src="/documents/--full",
            driver="libdriver.so",
            keyboard="/k.qxk",
            skip_absent=True,
        )
        self.assertEqual((self.folder / "document").read_bytes(), b"\xff{")
        (call,) = self.calls()
        for option in ("--driver=libdriver.so", "--keyboard=/k.qxk", "--skip-absent", "full"):
            self.assertIn(option, call)
        self.assertNotIn("--repair", call)
        for secret in ("content", "variables"):
            logged = result["invocation"]["module_args"][secret]
            self.assertEqual(logged, "VALUE_SPECIFIED_IN_NO_LOG_PARAMETER")

    def test_what_a_keyboard_holds_is_shown_and_never_obeyed(self):
        setting = {**SETTING, "to": "\x1b[2J\n\u202e\x9b \ud800"}
        result = self.run_module(
            answer(json.dumps({**WRITTEN, "settings": [setting]})), answer(NO_RECEIPTS)
        )
        self.assertEqual(
            result["diff"]["after"], "output delay: \\u001b[2J\\u000a\\u202e\\u009b \\ud800\n"
        )
        self.assertIsNone(result["receipt"])

    def test_facts(self):
        identity = {"schema": 1, "keyboard": {"name": "TILL"}, "directory": [{"module": 1}]}
        result = self.run_module(answer(identity, "identify"), module="keyboard_facts")
        self.assertEqual(
            result["ansible_facts"]["qx_keyboard"],
            {"name": "TILL", "directory": [{"module": 1}], "interrupted": None},
        )
        for out in ({**identity, "keyboard": []}, error("keyboard-not-opened"), "TILL"):
            result = self.run_module(answer(out, status=0), module="keyboard_facts")
            self.assertTrue(result["failed"])
            self.assertNotIn("ansible_facts", result)


class Failures(ModuleTest):
    def test_only_a_result_of_the_documented_shape_is_believed(self):
        junk = [
            ("", 0),
            ("Segmentation fault", 0),
            ("[1]", 0),
            ({**NOTHING, "schema": 2}, 0),
            ({**NOTHING, "bytesSent": True}, 0),
            ({**WRITTEN, "bytesSent": "3"}, 0),
            ({**WRITTEN, "settings": [{**SETTING, "to": 9}]}, 0),
            ({**WRITTEN, "settings": ["output delay"]}, 0),
            ({"schema": 1, "bytesSent": 3, "settings": []}, 0),
            ({**NOTHING, "error": "none"}, 0),
            ("\udcff" + json.dumps(NOTHING), 0),
            ("[" * 100000, 0),
            (WRITTEN, 5),
            ({"schema": 1, "error": {"code": 7, "message": "seven"}}, 4),
        ]
        for out, status in junk:
            with self.subTest(out=str(out)[:60], status=status):
                result = self.run_module(
                    answer(out, status=status), answer(NO_RECEIPTS), answer(NO_WRITES, "--list")
                )
                self.assertTrue(result["failed"])
                self.assertEqual(result["code"], "unexpected-result")
                self.assertEqual(
                    (result["keyboard_state"], result["changed"]), ("unchanged", False)
                )
        result = self.run_module(answer("\x1b]0;junk"), answer("more junk"))
        self.assertIn("it printed: \\u001b]0;junk", result["msg"])
        self.assertEqual((result["keyboard_state"], result["changed"]), ("unknown", True))

    def test_an_error_shows_what_a_failed_write_has_left(self):
        cases = {
            "not-touched": ("unchanged", False, None),
            "old": ("unchanged", False, None),
            "new": ("written", True, None),
            "partly-written": ("partly written", True, "recover set to finish"),
            "unknown": ("unknown", True, "run qxconf recover"),
            "a new word": ("unknown", True, "run qxconf recover"),
        }
        for holds, (state, changed, advice) in cases.items():
            for suggestion in (None, "restore-backup"):
                with self.subTest(holds=holds, suggestion=suggestion):
                    more = {"holds": holds, "suggestion": suggestion}
                    failed = answer(error("transfer-failed", **more), "download", status=4)
                    result = self.run_module(failed)
                    self.assertEqual((result["keyboard_state"], result["changed"]), (state, changed))
                    if advice and suggestion is None:
                        self.assertIn(advice, result["msg"])
                    else:
                        self.assertEqual(result["msg"], "transfer-failed it is")

    def test_the_records_show_what_a_write_without_an_error_has_left(self):
        def receipt(word: str, name: str = "K/T-@PID@-1") -> dict:
            return {"time": "@NOW@", "backup": name, "result": word, "document": "till.json"}

        def write(trace: str, name: str = "T-@PID@-2") -> dict:
            return {"time": "@NOW@", "id": name, "trace": trace, "document": "till.json"}

        old = {**receipt("partly written"), "time": "2001-01-01T00:00:00.000Z"}
        cases = [
            ([receipt("nothing changed"), old], None, "unchanged", False),
            ([old, receipt("written")], None, "written", True),
            ([receipt("partly written")], None, "partly written", True),
            ([receipt("differs")], None, "partly written", True),
            ([receipt("a new word")], None, "unknown", True),
            ([receipt("verified", "K/T-1-1")], None, "unknown", True),
            ([{**receipt("verified", "K/T-1-1"), "document": "x"}], None, "unchanged", False),
            ([], write("partial"), "partly written", True),
            ([], write("before"), "unchanged", False),
            ([], write("after"), "written", True),
            ([], write("none"), "unknown", True),
            ([], write("partial", "T-1-2"), "unknown", True),
        ]
        for receipts, journal, state, changed in cases:
            with self.subTest(receipts=receipts, journal=journal):
                writes = {"schema": 1, "onRecord": [journal] if journal else []}
                answers = [
                    answer("", "download", status=4),
                    answer({"schema": 1, "receipts": receipts}, "receipts"),
                    answer(writes, "recover", "--list"),
                ]
                if journal and "@PID@" in journal["id"]:
                    answers.append(answer(writes, "recover"))
                result = self.run_module(*answers)
                self.assertEqual((result["keyboard_state"], result["changed"]), (state, changed))
                self.assertEqual(result["exit_status"], 4)
                is_told = "qxconf recover" in result["msg"]
                self.assertEqual(is_told, state in ("partly written", "unknown"))

    def test_one_that_hangs_is_ended_with_all_that_it_has_started(self):
        begin = time.monotonic()
        result = self.run_module(
            answer("", hangs=True), answer(NO_RECEIPTS), answer(NO_WRITES), timeout=1
        )
        self.assertLess(time.monotonic() - begin, 300)
        self.assertEqual((result["code"], result["keyboard_state"]), ("timeout", "unchanged"))
        self.assertIn("did not end within 1 s", result["msg"])
        child = int((self.folder / "child").read_text())
        state = pathlib.Path(f"/proc/{child}/stat")
        for _ in range(100):  # until its new parent has noticed
            if not state.exists() or state.read_text().split()[2] == "Z":
                break
            time.sleep(0.1)
        else:
            self.fail("its child is still running")

    def test_one_that_is_killed_is_reported_so(self):
        result = self.run_module(answer("", status=-9), answer(NO_RECEIPTS), answer(NO_WRITES))
        self.assertEqual(result["code"], "killed")
        self.assertEqual(
            result["msg"],
            "qxconf download was killed by signal 9 (SIGKILL); the keyboard was not changed",
        )

    def test_every_fault_of_a_document_is_shown_with_its_place(self):
        faults = [{"place": f"/pos/{i}", "message": f"fault {i}"} for i in range(12)]
        out = error("document-invalid", faults=faults)
        result = self.run_module(answer(out, status=6))
        self.assertTrue(result["msg"].startswith("till.json: /pos/0: fault 0; /pos/1: fault 1; "))
        self.assertTrue(result["msg"].endswith("; /pos/9: fault 9; 2 more are in the result"))
        self.assertEqual(result["faults"], faults)
        self.assertEqual((result["keyboard_state"], result["changed"]), ("unchanged", False))

    def test_arguments_are_refused_by_name_before_anything_is_run(self):
        wrong = {
            "keyboard: k.qxk is not an absolute path": {"keyboard": "k.qxk"},
            "driver: lib/x.so is not an absolute path": {"driver": "lib/x.so"},
            "timeout: 0 is not a number of seconds from 1 up": {"timeout": 0},
            'variables: "a b" is not a name': {"variables": coded(b'{"a b": "1"}')},
            "variables: the value of a has a null character": {
                "variables": coded(b'{"a": "x\\u0000"}')
            },
            "content: not as the controller's": {"content": "{}"},
        }
        for message, options in wrong.items():
            with self.subTest(message):
                result = self.run_module(**options)
                self.assertTrue(result["failed"])
                self.assertIn(message, result["msg"])
                self.assertFalse((self.folder / "calls").exists())
        for program in ("/no/qxconf", str(self.folder)):
            result = self.run_module(executable=program)
            self.assertEqual(result["code"], "qxconf-not-started")
            self.assertIn(f"{program} cannot be run", result["msg"])


class Recovery(ModuleTest):
    CUT = {"id": "T-1-1", "document": "old.json", "time": "2026-01-31T09:05:07.123Z"}
    REFUSED = {**error("write-interrupted"), "interrupted": CUT}

    def test_an_interrupted_write_fails_the_task_unless_the_playbook_says_otherwise(self):
        result = self.run_module(answer(self.REFUSED, status=4))
        self.assertEqual((result["keyboard_state"], result["changed"]), ("partly written", False))
        self.assertIn("recover set to finish or rollback", result["msg"])
        self.assertEqual(result["interrupted"], self.CUT)
        result = self.run_module(answer({**PLAN, "interrupted": self.CUT}), check=True)
        self.assertEqual((result["failed"], result["code"]), (True, "write-interrupted"))
        # Nothing to be written is not refused.
        result = self.run_module(answer({**NOTHING, "interrupted": self.CUT}))
        self.assertEqual((result["changed"], result["interrupted"]), (False, self.CUT))

    def test_it_is_finished_or_rolled_back_first_if_the_playbook_says_so(self):
        settled = {"schema": 1, "bytesSent": 5}
        for way, done in (("finish", "finished"), ("rollback", "rolled back")):
            for first in (
                answer(self.REFUSED, status=4),
                answer({**NOTHING, "interrupted": self.CUT}),
            ):
                result = self.run_module(
                    first,
                    answer(settled, "recover", f"--{way}"),
                    answer(NOTHING, "download"),
                    recover=way,
                )
                self.assertEqual((result["changed"], result["recovered"]), (True, done))
                self.assertEqual(result["diff"]["after"], f"interrupted write: {done}\n")
            planned = self.run_module(
                answer({**PLAN, "interrupted": self.CUT}, "--dry-run"), check=True, recover=way
            )
            self.assertEqual((planned["changed"], planned["recovered"]), (True, done))
        result = self.run_module(answer(NOTHING), recover="finish")
        self.assertEqual((result["changed"], result["recovered"]), (False, None))

    def test_a_recovery_that_fails_is_no_success(self):
        refused = answer(self.REFUSED, status=4)
        receipt = {"time": "@NOW@", "backup": "K/T-@PID@-1", "result": "partly written"}
        result = self.run_module(
            refused,
            answer("", "--finish", status=-9, remember=True),
            answer({"schema": 1, "receipts": [receipt]}),
            answer(NO_WRITES),
            recover="finish",
        )
        self.assertEqual((result["recovered"], result["changed"]), (None, True))
        self.assertEqual(result["keyboard_state"], "partly written")
        result = self.run_module(
            refused,
            answer({"schema": 1, "bytesSent": 5}),
            answer(error("keyboard-busy", holds="not-touched"), "download", status=4),
            recover="rollback",
        )
        self.assertEqual((result["recovered"], result["changed"]), ("rolled back", True))


if __name__ == "__main__":
    unittest.main()
