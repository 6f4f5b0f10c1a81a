# Copyright (c) 2026 The QXControls authors
# MIT License (see LICENSE)
"""The work of the module keyboard: a download, after a recovery if the playbook requests one."""

from __future__ import annotations

import datetime
from typing import NamedTuple

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.qxcontrols.keyboards.plugins.module_utils.options import keyboard_options
from ansible_collections.qxcontrols.keyboards.plugins.module_utils.qxconf import (
    Failure,
    Qxconf,
    member,
)
from ansible_collections.qxcontrols.keyboards.plugins.module_utils.records import (
    PARTLY_WRITTEN,
    UNCHANGED,
    UNKNOWN,
    receipt_of,
    state_after,
)

MOST_FAULTS_IN_MESSAGE = 10
RECOVERED = {"finish": "finished", "rollback": "rolled back"}


class Outcome(NamedTuple):
    """The result of a download, or of its plan."""

    bytes_sent: int
    settings: list[dict]
    backup: str
    interrupted: dict | None


class Task:
    """One run of the module: what was asked for, and what has been done so far."""

    def __init__(
        self, module: AnsibleModule, folder: str, document: str, variables: dict[str, str]
    ) -> None:
        parameters = module.params
        self._module = module
        self._is_check = module.check_mode
        self._recover = parameters["recover"]
        self._qxconf = Qxconf(
            parameters["executable"], keyboard_options(parameters), parameters["timeout"], folder
        )
        self._document = document
        self._options = [f"--set={name}={v}" for name, v in variables.items()]
        self._options += ["--skip-absent"] if parameters["skip_absent"] else []
        self._options += ["--repair"] if parameters["repair"] else []
        self._options += ["--dry-run"] if self._is_check else []
        self._started = datetime.datetime.now(datetime.timezone.utc)
        self._changed = False
        self._interrupted: dict | None = None
        self._recovered: str | None = None

    def run(self) -> None:
        """Ends the module with its result."""
        try:
            outcome = self._program()
        except Failure as failure:
            return self._fail(failure)
        receipt = self._receipt(outcome)
        for warning in self._qxconf.warnings:
            self._module.warn(warning)
        self._changed = self._changed or outcome.bytes_sent > 0
        self._module.exit_json(
            changed=self._changed,
            settings=outcome.settings,
            bytes_sent=outcome.bytes_sent,
            keyboard_state="differs" if self._is_check and self._changed else "as wanted",
            backup=outcome.backup,
            receipt=receipt,
            diff=self._difference(outcome.settings),
            **self._circumstances(),
        )

    def _program(self) -> Outcome:
        try:
            outcome = self._download()
        except Failure as failure:
            self._interrupted = failure.result.get("interrupted")
            is_settled = self._recover != "fail" and not self._is_check
            if failure.code != "write-interrupted" or not is_settled:
                raise
            return self._download_after_recovery()
        self._interrupted = outcome.interrupted
        if self._interrupted and self._recover != "fail":
            if not self._is_check:
                return self._download_after_recovery()
            self._recovered, self._changed = RECOVERED[self._recover], True
        elif self._interrupted and self._is_check and outcome.bytes_sent > 0:
            raise Failure(
                "write-interrupted",
                "the keyboard holds a part of an interrupted write, which has to be finished or "
                "rolled back first",
            )
        return outcome

    def _download_after_recovery(self) -> Outcome:
        settled = self._qxconf.run("recover", f"--{self._recover}")
        self._changed = member(settled, "bytesSent", int) > 0
        self._recovered = RECOVERED[self._recover]
        return self._download()

    def _download(self) -> Outcome:
        result = self._qxconf.run("download", *self._options, self._document)
        for setting in member(result, "settings", list):
            for part in ("setting", "place", "from", "to"):
                member(setting if isinstance(setting, dict) else {}, part, str)
        return Outcome(
            member(result, "bytesToSend" if self._is_check else "bytesSent", int),
            result["settings"],
            "" if self._is_check else member(result, "backup", str),
            result.get("interrupted"),
        )

    def _receipt(self, outcome: Outcome) -> dict | None:
        if self._is_check or outcome.bytes_sent == 0:
            return None
        try:
            return receipt_of(self._qxconf, outcome.backup)
        except Failure as failure:  # the write itself is proved
            self._qxconf.warnings.append(f"the receipt cannot be read: {failure.message}")
            return None

    def _circumstances(self) -> dict:
        return {
            "document": self._document,
            "recovered": self._recovered,
            "interrupted": self._interrupted,
        }

    def _difference(self, settings: list[dict]) -> dict:
        before = [f"{s['setting']}: {s['from']}\n" for s in settings]
        after = [f"{s['setting']}: {s['to']}\n" for s in settings]
        if self._recovered is not None:
            before.insert(0, "interrupted write: partly written\n")
            after.insert(0, f"interrupted write: {self._recovered}\n")
        return {
            "before_header": "keyboard",
            "after_header": self._document,
            "before": "".join(before),
            "after": "".join(after),
        }

    def _fail(self, failure: Failure) -> None:
        documents = {self._document, (self._interrupted or {}).get("document")}
        state = state_after(failure, self._qxconf, self._started, documents)
        is_earlier = failure.code == "write-interrupted"
        self._module.fail_json(
            msg=self._message_of(failure, state),
            changed=self._changed or not (is_earlier or state == UNCHANGED),
            keyboard_state=state,
            code=failure.code,
            exit_status=failure.exit_status,
            faults=failure.faults,
            error=failure.error,
            **self._circumstances(),
        )

    def _message_of(self, failure: Failure, state: str) -> str:
        """The message for people: each fault with its place, and what to do."""
        message = failure.message
        faults = failure.faults
        if len(faults) > 1:
            named = faults[:MOST_FAULTS_IN_MESSAGE]
            message = f"{self._document}: "
            message += "; ".join(f"{fault['place']}: {fault['message']}" for fault in named)
            if len(named) < len(faults):
                message += f"; {len(faults) - len(named)} more are in the result"
        if state == UNCHANGED and failure.code in ("timeout", "killed", "unexpected-result"):
            message += "; the keyboard was not changed"
        if failure.error.get("suggestion") == "restore-backup":
            return message  # which names the backup
        if state == PARTLY_WRITTEN:
            message += (
                "; the keyboard is partly written: run this task again with recover set to finish or "
                "rollback, or run qxconf recover on this host"
            )
        if state == UNKNOWN:
            message += "; the keyboard may be partly written: run qxconf recover on this host"
        return message
