#!/usr/bin/python
# Copyright (c) 2026 The QXControls authors
# MIT License (see LICENSE)
"""Facts about the keyboard of a till."""

from __future__ import annotations

DOCUMENTATION = r"""
---
module: keyboard_facts
short_description: Show which keyboard a till has
version_added: "0.1.0"
author: The QXControls authors (@qxcontrols)
description:
  - Returns the keyboard's name, versions, capabilities and directory as the fact C(qx_keyboard).
  - Reads the keyboard and writes nothing, so it does the same in check mode.
extends_documentation_fragment:
  - qxcontrols.keyboards.keyboard
notes:
  - Supports C(check_mode).
seealso:
  - module: qxcontrols.keyboards.keyboard
"""

EXAMPLES = r"""
- name: Read which keyboards the tills have
  qxcontrols.keyboards.keyboard_facts:
    driver: /usr/lib/tandorqx/libtandorqx.so

- name: Program the keyboards that have a magnetic card reader
  qxcontrols.keyboards.keyboard:
    src: reader.json
    driver: /usr/lib/tandorqx/libtandorqx.so
  when: "'MODULE_MAGNET_CONFIG' in qx_keyboard.directory | map(attribute='name')"
"""

RETURN = r"""
ansible_facts:
  description: The facts about the keyboard.
  returned: success
  type: complex
  contains:
    qx_keyboard:
      description: The keyboard.
      returned: success
      type: complex
      contains:
        name:
          description: The name that the keyboard gives itself.
          returned: success
          type: str
          sample: QX-POS-FULL
        bootloader:
          description: The version of the bootloader.
          returned: success
          type: str
        program:
          description: The version of the keyboard's program.
          returned: success
          type: str
        country:
          description: The country of the keyboard's key caps.
          returned: success
          type: str
        config:
          description: The configuration number.
          returned: success
          type: str
        flags:
          description: The capabilities.
          returned: success
          type: dict
        directory:
          description: The modules, each with C(module), C(name) and C(address).
          returned: success
          type: list
          elements: dict
        interrupted:
          description: The interrupted write of which the keyboard holds a part, or null.
          returned: success
          type: dict
"""

import tempfile

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.qxcontrols.keyboards.plugins.module_utils.options import (
    KEYBOARD_OPTIONS,
    check_keyboard_options,
    keyboard_options,
)
from ansible_collections.qxcontrols.keyboards.plugins.module_utils.qxconf import (
    Failure,
    Qxconf,
    member,
)


def main() -> None:
    module = AnsibleModule(argument_spec=KEYBOARD_OPTIONS, supports_check_mode=True)
    parameters = module.params
    try:
        check_keyboard_options(parameters)
    except ValueError as error:
        module.fail_json(msg=str(error), code="usage")
    with tempfile.TemporaryDirectory(dir=module.tmpdir) as folder:
        qxconf = Qxconf(
            parameters["executable"], keyboard_options(parameters), parameters["timeout"], folder
        )
        try:
            result = qxconf.run("identify")
            facts = dict(member(result, "keyboard", dict))
            facts["directory"] = member(result, "directory", list)
            facts["interrupted"] = result.get("interrupted")
        except Failure as failure:
            module.fail_json(
                msg=failure.message,
                code=failure.code,
                exit_status=failure.exit_status,
                error=failure.error,
            )
    for warning in qxconf.warnings:
        module.warn(warning)
    module.exit_json(changed=False, ansible_facts={"qx_keyboard": facts})


if __name__ == "__main__":
    main()
