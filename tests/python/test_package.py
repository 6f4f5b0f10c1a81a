"""The Python package with simulated keyboards."""
import contextlib
import copy
import io
import os
import pathlib
import re
import tempfile
import threading
import unittest

import qxcontrols

PROJECT = pathlib.Path(__file__).resolve().parent.parent.parent
# a sanitizer's library, which the programs that are started here contain themselves
os.environ.pop("LD_PRELOAD", None)


class Package(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        shipped = self.folder / "data/qxcontrols"
        shipped.mkdir(parents=True)
        (shipped / "layouts").symlink_to(PROJECT / "layouts")
        os.environ["XDG_DATA_DIRS"] = str(self.folder / "data")
        os.environ["XDG_DATA_HOME"] = str(self.folder / "home")

    def keyboard(self, name: str = "till", model: str = "full") -> qxcontrols.Keyboard:
        return qxcontrols.Keyboard(file=self.folder / f"{name}.qxk", model=model,
                                   records=self.folder / "records")

    def test_a_planned_write_is_verified_and_restored(self) -> None:
        with self.keyboard() as keyboard:
            self.assertEqual(keyboard.identify()["name"], "QX-POS-FULL")
            before = keyboard.read()
            wanted = copy.deepcopy(before)
            wanted["commonKeyboard"]["outputDelay"] = "${delay}"
            plan = keyboard.plan(wanted, variables={"delay": "9"})
            change, = plan.changes
            self.assertEqual((change.place, change.after), ("/commonKeyboard/outputDelay", "9"))
            self.assertEqual(keyboard.read(), before, "a plan writes nothing")
            steps: "list[tuple[str, int]]" = []
            result = keyboard.write(plan, progress=lambda step, percent: steps.append((step, percent)))
            self.assertTrue(result.written and result.verified)
            self.assertIn(("writing", 100), steps)
            after = keyboard.read()
            self.assertEqual(after["commonKeyboard"]["outputDelay"], 9)
            self.assertFalse(keyboard.plan(after), "nothing is left to do")
            assert result.backup is not None
            restore = keyboard.plan_restore(result.backup)
            self.assertEqual(restore.changes[0].before, "9")
            keyboard.write(restore)
            self.assertEqual(keyboard.read(), before)

    def test_errors_carry_what_went_wrong_and_where(self) -> None:
        with self.assertRaises(qxcontrols.Error) as raised:
            qxcontrols.check({"format": "qx-configuration", "version": 1,
                              "commonKeyboard": {"outputDelay": 300}})
        self.assertEqual(raised.exception.code, "document-invalid")
        fault, = raised.exception.faults
        self.assertEqual((fault.place, fault.code), ("/commonKeyboard/outputDelay", "not-a-number"))

        keyboard = self.keyboard()
        with self.assertRaisesRegex(RuntimeError, "not open"):
            keyboard.read()
        with keyboard:
            wanted = keyboard.read()
            wanted["commonKeyboard"]["outputDelay"] = 1
            plan = keyboard.plan(wanted)
            wanted["commonKeyboard"]["outputDelay"] = 2
            keyboard.write(keyboard.plan(wanted))
            with self.assertRaises(qxcontrols.Error) as raised:
                keyboard.write(plan)
            self.assertEqual((raised.exception.code, raised.exception.holds),
                             ("keyboard-changed", "not-touched"))
            with self.assertRaisesRegex(ValueError, "till"):
                keyboard.plan(wanted, variables={"till": "1"})
        with self.assertRaises(qxcontrols.Error) as raised:
            qxcontrols.Keyboard(driver=self.folder / "none.so").open()
        self.assertEqual(raised.exception.code, "keyboard-not-opened")

    def test_sections_that_the_keyboard_lacks_are_refused_or_left_out(self) -> None:
        with self.keyboard("full") as keyboard:
            document = keyboard.read()
        with self.keyboard("magnet", "magnet") as keyboard:
            with self.assertRaises(qxcontrols.Error) as raised:
                keyboard.plan(document)
            self.assertIn("/barcode", [fault.place for fault in raised.exception.faults])
            keyboard.write(keyboard.plan(document, skip_absent=True))
            self.assertEqual(keyboard.read()["magnetCard"], document["magnetCard"])

    def test_an_error_in_the_progress_function_ends_in_python(self) -> None:
        def fail(_step: str, _percent: int) -> None:
            raise KeyError("progress")

        with self.keyboard() as keyboard:
            wanted = keyboard.read()
            wanted["commonKeyboard"]["outputDelay"] = 1
            with self.assertRaisesRegex(KeyError, "progress"):
                keyboard.write(keyboard.plan(wanted), progress=fail)
            self.assertEqual(keyboard.interrupted(), [])

    def test_keyboards_are_written_by_several_threads(self) -> None:
        failures: "list[BaseException]" = []

        def write(number: int) -> None:
            try:
                with self.keyboard(str(number)) as keyboard:
                    wanted = keyboard.read()
                    wanted["commonKeyboard"]["outputDelay"] = number
                    keyboard.write(keyboard.plan(wanted), progress=lambda *_step: None)
                    assert keyboard.read()["commonKeyboard"]["outputDelay"] == number
            except BaseException as error:  # pylint: disable=broad-except
                failures.append(error)

        threads = [threading.Thread(target=write, args=(number,)) for number in range(1, 5)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(failures, [])

    def test_a_saved_document_is_replaced_as_a_whole(self) -> None:
        path = self.folder / "till.json"
        qxcontrols.save({"format": "qx-configuration"}, path)
        with self.assertRaises(TypeError):
            qxcontrols.save({"format": object()}, path)
        self.assertEqual(qxcontrols.load(path), {"format": "qx-configuration"})
        self.assertEqual([file.name for file in self.folder.glob("till*")], ["till.json"])

    def test_the_examples_of_the_manual_work(self) -> None:
        manual = (PROJECT / "docs/python.md").read_text(encoding="utf-8")
        examples = re.findall(r"^```python\n(.*?)^```", manual, re.DOTALL | re.MULTILINE)
        self.assertEqual(len(examples), 3)
        os.chdir(self.folder)
        for example in examples:
            printed = io.StringIO()
            with contextlib.redirect_stdout(printed):
                exec(example, {})
            for shown in re.findall(r"# (/.*)", example):
                self.assertIn(shown, printed.getvalue())
        with self.keyboard() as keyboard:
            descriptions = [key["description"] for key in
                            keyboard.read()["layeredFuncKeys"]["keys"]]
        self.assertEqual(descriptions, ["Till"])


if __name__ == "__main__":
    unittest.main()
