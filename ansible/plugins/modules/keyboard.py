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
  - Writes the settings of a configuration document to a keyboard, if they differ. Settings that are
    not in the document do not change.
  - C(qxconf) on the till plans the write, saves the keyboard's contents, sends the bytes that
    differ, and reads the keyboard back to compare. The task counts as changed only if bytes were sent.
  - With C(--check) nothing is written. With C(--diff) each setting is shown before and after the
    change.
extends_documentation_fragment:
  - qxcontrols.keyboards.keyboard
options:
  src:
    description:
      - The document, a file on the controller. A relative path is searched for as in C(copy),
        first in C(files/) of the role or playbook.
      - Exactly one of I(src) and I(content) is required.
    type: path
  content:
    description:
      - The document itself, as a text or as a mapping.
    type: raw
  variables:
    description:
      - Values of the document's variables, the placeholders C(${name}). A value is a text, a number
        or a boolean. Put numbers with leading zeros in quotes.
      - A placeholder that is not listed here gets the value of the host variable with that name, if
        there is one.
      - While C(qxconf) runs, the till's process list shows the values.
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
    description: Shows each setting before and after the change.
    support: full
notes:
  - Supports C(check_mode) and C(--diff).
  - Backups, receipts and interrupted writes are kept in the data folder of the user that the task
    runs as, so every task for a keyboard should run as the same user.
  - If settings are secret, set C(no_log) on the task, because the difference shows them.
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
  description: C(as wanted) if the keyboard holds the document, or C(differs) if check mode found that
    it does not. After a failure C(unchanged), C(written), C(partly written) or C(unknown).
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
  description: The error code of C(qxconf), or C(qxconf-not-started), C(timeout), C(killed) or
    C(unexpected-result).
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

import os
import tempfile

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.qxcontrols.keyboards.plugins.module_utils.options import (
    KEYBOARD_OPTIONS,
    check_keyboard_options,
    decoded,
    variables_of,
)
from ansible_collections.qxcontrols.keyboards.plugins.module_utils.records import UNCHANGED
from ansible_collections.qxcontrols.keyboards.plugins.module_utils.task import Task


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
