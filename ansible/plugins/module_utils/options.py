# Copyright (c) 2026 The QXControls authors
# MIT License (see LICENSE)
"""The modules' options: checked, decoded, and as options of qxconf."""

from __future__ import annotations

import base64
import json
import os
import re

from ansible_collections.qxcontrols.keyboards.plugins.module_utils.qxconf import visible

# The options of every module that opens a keyboard.
KEYBOARD_OPTIONS = {
    "driver": {"type": "str"},
    "keyboard": {"type": "path"},
    "model": {"type": "str"},
    "layouts": {"type": "path"},
    "layout": {"type": "str"},
    "executable": {"type": "path", "default": "qxconf"},
    "timeout": {"type": "int", "default": 600},
}


def check_keyboard_options(parameters: dict) -> None:
    """Raises ValueError that names the option which cannot be used."""
    for name in ("keyboard", "layouts", "driver", "model", "executable"):
        value = parameters[name]
        if value is None:
            continue
        if value == "" or "\0" in value:
            raise ValueError(f"{name}: {json.dumps(value)} is not a usable path or name")
        # The current folder of a task is none that the user has chosen.
        needs_folder = name in ("keyboard", "layouts")
        if (needs_folder or os.sep in value) and not os.path.isabs(value):
            raise ValueError(f"{name}: {visible(value)} is not an absolute path")
    if parameters["timeout"] < 1:
        raise ValueError(f"timeout: {parameters['timeout']} is not a number of seconds from 1 up")


def keyboard_options(parameters: dict) -> list[str]:
    """The same as options of qxconf."""
    options = []
    for name in ("driver", "keyboard", "model", "layouts", "layout"):
        if parameters[name] is not None:
            options.append(f"--{name}={parameters[name]}")
    return options


def decoded(parameters: dict, name: str) -> bytes:
    """The option's value, as the controller has sent it. Raises ValueError."""
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
