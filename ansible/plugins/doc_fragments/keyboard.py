# Copyright (c) 2026 The QXControls authors
# MIT License (see LICENSE)
"""The options of every module that opens a keyboard."""

from __future__ import annotations


class ModuleDocFragment:
    DOCUMENTATION = r"""
options:
  driver:
    description:
      - The keyboard's driver library on the till, as an absolute path or as a name in the system's
        search path for libraries.
      - Without I(driver) and I(keyboard), C(qxconf) uses the driver that the environment variable
        C(QXCONF_DRIVER) names, or else the simulated keyboard in the user's data folder.
    type: str
  keyboard:
    description:
      - Use the simulated keyboard kept in this file; an absolute path.
    type: path
  model:
    description:
      - Create the simulated keyboard if there is none. C(full), C(magnet), C(x1-4620), or the
        absolute path of a model file.
    type: str
  layouts:
    description:
      - The folder of the keyboard layouts, if it is not the one installed with C(qxconf).
    type: path
  layout:
    description:
      - The keyboard layout, by file name or language id, if it is not the one that the keyboard
        names.
    type: str
  executable:
    description:
      - The program C(qxconf), as an absolute path or as a name in C(PATH).
    type: path
    default: qxconf
  timeout:
    description:
      - The number of seconds that each run of C(qxconf) may take. After that it is asked to end,
        and ten seconds later it is killed. This may interrupt a write, which is then on record.
    type: int
    default: 600
"""
