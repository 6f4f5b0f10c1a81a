# Copyright (c) 2026 The QXControls authors
# MIT License (see LICENSE)
"""A report of every keyboard that a playbook has programmed."""

from __future__ import annotations

DOCUMENTATION = r"""
---
name: report
type: aggregate
short_description: Write a report of the keyboards that a playbook has programmed
version_added: "0.1.0"
author: The QXControls authors (@qxcontrols)
description:
  - Writes a JSON file with one entry for each keyboard that the module
    M(qxcontrols.keyboards.keyboard) was run for, for each host that was not reached, and for each
    other task that failed.
  - The file is replaced in one step when the playbook ends.
requirements:
  - C(qxcontrols.keyboards.report) in C(callbacks_enabled) of C(ansible.cfg)
options:
  file:
    description: The file of the report.
    type: path
    default: keyboards.report.json
    env:
      - name: QXCONTROLS_REPORT
    ini:
      - section: callback_qxcontrols_report
        key: file
"""

import datetime
import json
import os
import tempfile

from ansible.plugins.callback import CallbackBase

MODULE = "qxcontrols.keyboards.keyboard"
MEMBERS = ("document", "keyboard_state", "bytes_sent", "backup", "recovered", "receipt")
ERROR_MEMBERS = ("cause", "place", "file", "function")  # as qxconf reports them


class CallbackModule(CallbackBase):
    """Collects the results and writes the report at the end."""

    CALLBACK_VERSION = 2.0
    CALLBACK_TYPE = "aggregate"
    CALLBACK_NAME = "qxcontrols.keyboards.report"
    CALLBACK_NEEDS_ENABLED = True

    def __init__(self, display=None) -> None:
        super().__init__(display)
        self._keyboards: list[dict] = []

    def v2_runner_on_ok(self, result) -> None:
        if self._is_ours(result):
            self._add(result, "done")

    def v2_runner_on_failed(self, result, ignore_errors=False) -> None:
        if self._is_ours(result):
            self._add(result, "failed")
        elif not ignore_errors:
            self._enter(result, "failed", {**result._result, "code": "task-failed"})

    def v2_runner_on_unreachable(self, result) -> None:
        self._enter(result, "unreachable", result._result)

    def v2_playbook_on_stats(self, stats) -> None:
        counts = dict.fromkeys(("changed", "unchanged", "failed", "unreachable"), 0)
        for keyboard in self._keyboards:
            counts[keyboard["result"]] += 1
        report = {"format": "qx-fleet-report", "version": 1, **counts}
        report["keyboards"] = sorted(self._keyboards, key=lambda k: (k["host"], k["item"] or ""))
        path = os.path.abspath(self.get_option("file"))
        try:
            self._replace(path, json.dumps(report, indent=2) + "\n")
        except OSError as error:
            self._display.warning(f"the report {path} cannot be written: {error.strerror}")
        else:
            self._display.display(f"the report is in {path}")

    @staticmethod
    def _is_ours(result) -> bool:
        return (result._task.resolved_action or result._task.action) == MODULE

    def _add(self, result, word: str) -> None:
        task, answer = result._task, result._result
        is_loop = task.loop is not None or task.loop_with
        if not is_loop or "results" not in answer:
            return self._enter(result, word, answer)
        for item in answer["results"]:
            if not item.get("skipped"):
                word = "failed" if item.get("failed") else "done"
                self._enter(result, word, item, str(item.get("_ansible_item_label", "")))

    def _enter(self, result, word: str, answer: dict, item: str | None = None) -> None:
        if word == "done":
            word = "changed" if answer.get("changed") else "unchanged"
        entry = {"host": result._host.get_name(), "item": item, "result": word}
        entry["check"] = bool(result._task.check_mode)
        entry["time"] = datetime.datetime.now(datetime.timezone.utc).isoformat(
            timespec="milliseconds"
        )
        entry.update((name, answer.get(name)) for name in MEMBERS)
        entry["settings"] = [] if result._task.no_log else answer.get("settings", [])
        entry["error"] = None
        if word in ("failed", "unreachable"):
            entry["error"] = {"code": answer.get("code", word), "message": answer.get("msg", "")}
            of_qxconf = answer["error"] if self._is_ours(result) and answer.get("error") else {}
            entry["error"].update((name, of_qxconf.get(name)) for name in ERROR_MEMBERS)
        self._keyboards.append(entry)

    @staticmethod
    def _replace(path: str, text: str) -> None:
        with tempfile.NamedTemporaryFile(
            "w", dir=os.path.dirname(path), prefix=".", delete=False, encoding="utf-8"
        ) as file:
            try:
                file.write(text)
                file.flush()
                os.fsync(file.fileno())
                os.replace(file.name, path)
            except OSError:
                os.unlink(file.name)
                raise
