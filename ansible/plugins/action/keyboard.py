# Copyright (c) 2026 The QXControls authors
# MIT License (see LICENSE)
"""The controller's part of the module: it reads the document and the host's variables.

It sends both along, so that check mode needs no copy of the document on the till, and in Base64, so
that the module can keep them from being logged.
"""

from __future__ import annotations

import base64
import json
import re

from ansible.errors import AnsibleError
from ansible.module_utils.common.text.converters import to_bytes, to_native, to_text
from ansible.plugins.action import ActionBase

LONGEST_DOCUMENT = 4 * 1024 * 1024  # as qxconf reads it
PLACEHOLDER = re.compile(r"\$\$\{|\$\{([A-Za-z][A-Za-z0-9_-]*)\}")  # $${ is the text ${


def placeholders(document: object) -> set[str]:
    """The names of the variables that a document has placeholders for."""
    if isinstance(document, str):
        return {match[1] for match in PLACEHOLDER.finditer(document) if match[1]}
    if isinstance(document, dict):
        document = list(document.values())
    if isinstance(document, list):
        return set().union(*map(placeholders, document))
    return set()


class ActionModule(ActionBase):
    """Runs the module with the document's contents and the values of its variables."""

    TRANSFERS_FILES = False

    def run(self, tmp=None, task_vars=None):
        task_vars = task_vars or {}
        result = super().run(tmp, task_vars)
        arguments = dict(self._task.args)
        try:
            document = self._document(arguments)
            variables = self._variables(arguments, document, task_vars)
        except AnsibleError as error:
            result.update(
                failed=True,
                code="usage",
                keyboard_state="unchanged",
                msg=to_native(error),
            )
            return result
        arguments["content"] = base64.b64encode(document).decode()
        arguments["variables"] = base64.b64encode(json.dumps(variables).encode()).decode()
        result.update(
            self._execute_module(
                module_name="qxcontrols.keyboards.keyboard",
                module_args=arguments,
                task_vars=task_vars,
            )
        )
        return result

    def _document(self, arguments: dict) -> bytes:
        source, content = arguments.get("src"), arguments.get("content")
        if (source is None) == (content is None):
            raise AnsibleError("exactly one of src and content is required")
        if content is not None:
            text = content if isinstance(content, str) else json.dumps(content, default=str)
            return to_bytes(text)
        if not isinstance(source, str) or not source:
            raise AnsibleError("src: not a path")
        path = self._find_needle("files", source)
        try:
            with open(path, "rb") as file:
                document = file.read(LONGEST_DOCUMENT + 1)
        except OSError as error:
            raise AnsibleError(f"src: {to_text(path)} cannot be read: {error.strerror}") from error
        if len(document) > LONGEST_DOCUMENT:
            raise AnsibleError(f"src: {to_text(path)} is longer than a document can be")
        return document

    def _variables(self, arguments: dict, document: bytes, task_vars: dict) -> dict:
        variables = arguments.get("variables")
        variables = {} if variables is None else variables
        if not isinstance(variables, dict):
            raise AnsibleError("variables: not a mapping of names to values")
        values = {str(name): value for name, value in variables.items()}
        try:
            needed = placeholders(json.loads(document))
        except (ValueError, RecursionError):
            needed = set()  # qxconf names the place where the document cannot be read
        for name in sorted(needed - set(values)):
            if name in task_vars:
                values[name] = self._templar.template(task_vars[name])
        for name, value in values.items():
            if not isinstance(value, (str, int, float, bool)):
                raise AnsibleError(
                    f"variables: the value of {name} is not a text, a number or a switch"
                )
        return values
