#!/usr/bin/python
# Copyright (c) 2026 The QXControls authors
# MIT License (see LICENSE)
"""The state of a till's keyboard."""

from __future__ import annotations

DOCUMENTATION = r"""
---
module: keyboard
short_description: Program the keyboard of a till
version_added: "0.1.0"
author: The QXControls authors (@qxcontrols)
description:
  - Makes a keyboard hold the settings of a configuration document. Settings that the document does
    not have stay as they are.
  - C(qxconf) on the till plans the write, saves the keyboard's contents, sends the bytes that
    differ, and reads them back and compares. The task has changed something only if bytes were sent.
  - With C(--check) nothing is written, and with C(--diff) each setting is shown in words as it is
    and as it is to be.
extends_documentation_fragment:
  - qxcontrols.keyboards.keyboard
options:
  src:
    description:
      - The document, a file on the controller. A relative path is looked for as C(copy) does it,
        beginning with C(files/) of the role or playbook.
      - Exactly one of I(src) and I(content) is required.
    type: path
  content:
    description:
      - The document itself, as a text or as a mapping.
    type: raw
  variables:
    description:
      - Values of the document's variables, the placeholders C(${name}). A value is a text, a number
        or a switch. Write one with leading zeros in quotes.
      - A placeholder that is not named here gets the host's own variable of that name, if there
        is one.
      - The till's process list shows the values while C(qxconf) runs.
    type: dict
    default: {}
  skip_absent:
    description:
      - Leave out settings that the keyboard has no module for. Otherwise such a document is refused.
    type: bool
    default: false
  repair:
    description:
      - Replace blocks of the keyboard that are damaged. Otherwise they are refused.
    type: bool
    default: false
  recover:
    description:
      - What to do if the keyboard holds a part of an earlier write that was interrupted.
      - With C(fail) the task fails. With C(finish) and C(rollback) the earlier write is finished or
        rolled back, and then the document is written.
    type: str
    choices: [fail, finish, rollback]
    default: fail
attributes:
  check_mode:
    description: Plans the write and reports whether it would change the keyboard.
    support: full
  diff_mode:
    description: Shows each setting in words, as it is and as it is to be.
    support: full
notes:
  - Supports C(check_mode) and C(--diff).
  - Backups, receipts and interrupted writes are kept in the data folder of the user that the task
    runs as, so every task for a keyboard should run as the same user.
  - For settings that are secret set C(no_log) on the task, since the difference shows them.
seealso:
  - module: qxcontrols.keyboards.keyboard_facts
"""

EXAMPLES = r"""
- name: Program the keyboard with the till's own number
  qxcontrols.keyboards.keyboard:
    src: till.json
    driver: /usr/lib/tandorqx/libtandorqx.so
    variables:
      till: "042"

- name: Program it, and first roll back a write that was interrupted
  qxcontrols.keyboards.keyboard:
    src: till.json
    driver: /usr/lib/tandorqx/libtandorqx.so
    recover: rollback

- name: Set the output delay of a simulated keyboard
  qxcontrols.keyboards.keyboard:
    keyboard: /var/lib/tills/test.qxk
    model: full
    content:
      format: qx-configuration
      version: 1
      commonKeyboard:
        outputDelay: 9
"""

RETURN = r"""
settings:
  description: The settings that were changed, or would be; each with C(setting), C(place), C(from)
    and C(to).
  returned: success
  type: list
  elements: dict
bytes_sent:
  description: The number of bytes that were sent to the keyboard, or would be in check mode.
  returned: success
  type: int
keyboard_state:
  description: Whether the keyboard holds the document (C(as wanted)); in check mode whether it would
    have to be changed (C(differs)). After a failure C(unchanged), C(written), C(partly written) or
    C(unknown).
  returned: always
  type: str
backup:
  description: The id of the backup of what the keyboard held before, or empty.
  returned: success
  type: str
receipt:
  description: The receipt of the write as C(qxconf receipts) shows it, or null.
  returned: success
  type: dict
recovered:
  description: Whether an interrupted write was C(finished) or C(rolled back), or would be in check
    mode; otherwise null.
  returned: always
  type: str
interrupted:
  description: The interrupted write of which the keyboard held a part, or null.
  returned: always
  type: dict
document:
  description: The name of the document.
  returned: always
  type: str
code:
  description: The code of the failure. It is one of C(qxconf), or C(qxconf-not-started), C(timeout),
    C(killed) or C(unexpected-result).
  returned: failure
  type: str
exit_status:
  description: The exit status of C(qxconf), or null.
  returned: failure
  type: int
faults:
  description: All faults of the document, each with C(place) and C(message).
  returned: failure
  type: list
  elements: dict
error:
  description: The error as C(qxconf) has reported it, or empty.
  returned: failure
  type: dict
"""

import base64
import datetime
import json
import os
import re
import tempfile
from typing import NamedTuple

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.qxcontrols.keyboards.plugins.module_utils.qxconf import (
    KEYBOARD_OPTIONS,
    Failure,
    Qxconf,
    check_keyboard_options,
    keyboard_options,
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
        if state == PARTLY_WRITTEN:
            message += (
                "; the keyboard is partly written: run this task again with recover set to finish or "
                "rollback, or run qxconf recover on this host"
            )
        if state == UNKNOWN:
            message += "; the keyboard may be partly written: run qxconf recover on this host"
        return message


def decoded(parameters: dict, name: str) -> bytes:
    """What the controller has sent in this option. Raises ValueError."""
    try:
        return base64.b64decode(parameters[name] or "", validate=True)
    except (TypeError, ValueError):
        raise ValueError(f"{name}: not as the controller's part of the module sends it") from None


def variables_of(parameters: dict) -> dict[str, str]:
    """The variables as texts. Raises ValueError that names the one which cannot be used."""
    values = {}
    for name, value in json.loads(decoded(parameters, "variables") or b"{}").items():
        if not re.fullmatch(r"[A-Za-z][A-Za-z0-9_-]*", name):
            raise ValueError(
                f"variables: {json.dumps(name)} is not a name: a letter, then letters, digits, "
                "hyphens and underscores"
            )
        if isinstance(value, bool):
            value = "true" if value else "false"
        values[name] = str(value)
        if "\0" in values[name]:
            raise ValueError(f"variables: the value of {name} has a null character")
    return values


def main() -> None:
    module = AnsibleModule(
        argument_spec={
            **KEYBOARD_OPTIONS,
            "src": {"type": "path"},
            # The controller's part of the module sends both in Base64. They are not logged, since
            # either may hold a secret, and what is not logged is not shown in any result either:
            # short values as they are would blacken every text with these characters.
            "content": {"type": "raw", "no_log": True},
            "variables": {"type": "raw", "no_log": True},
            "skip_absent": {"type": "bool", "default": False},
            "repair": {"type": "bool", "default": False},
            "recover": {
                "type": "str",
                "choices": ["fail", "finish", "rollback"],
                "default": "fail",
            },
        },
        supports_check_mode=True,
    )
    try:
        check_keyboard_options(module.params)
        variables = variables_of(module.params)
        content = decoded(module.params, "content")
    except ValueError as error:
        module.fail_json(msg=str(error), code="usage", keyboard_state=UNCHANGED)
    # A file of its own name, for messages, backups and receipts; no option begins like it.
    name = os.path.basename(module.params["src"] or "").lstrip("-") or "document"
    with tempfile.TemporaryDirectory(dir=module.tmpdir) as folder:
        with open(os.path.join(folder, name), "wb") as file:
            file.write(content)
        Task(module, folder, name, variables).run()


if __name__ == "__main__":
    main()
