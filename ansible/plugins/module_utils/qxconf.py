# Copyright (c) 2026 The QXControls authors
# MIT License (see LICENSE)
"""Runs qxconf and reads its results.

A result is believed only if it is JSON of the documented shape and the exit status agrees with it.
Everything else is a Failure.
"""

from __future__ import annotations

import json
import os
import signal
import subprocess
import tempfile
import unicodedata

# qxconf ends in order when it is asked to; a write that has begun gets this many seconds more.
SECONDS_TO_END = 10
SECONDS_FOR_RECORDS = 60  # at least: no driver can delay a command that opens no keyboard
LONGEST_QUOTE = 300


class Failure(Exception):
    """A failure, with qxconf's code or one of this module's own."""

    def __init__(
        self,
        code: str,
        message: str,
        exit_status: int | None = None,
        result: dict | None = None,
    ) -> None:
        super().__init__(message)
        self.code = code
        self.message = message
        self.exit_status = exit_status
        self.result = result or {}

    @property
    def error(self) -> dict:
        """The error as qxconf has reported it, or empty."""
        return self.result.get("error", {})

    @property
    def faults(self) -> list:
        """The faults of a document: each a dictionary with place and message."""
        faults = self.error.get("faults")
        if not isinstance(faults, list):
            return []
        return [f for f in faults if isinstance(f, dict) and {"place", "message"} <= set(f)]


def visible(value):
    """The value with control characters and those that change the direction of text made visible.

    A keyboard can hold any text; no terminal and no log must obey it.
    """
    if isinstance(value, str):
        return "".join(
            f"\\u{ord(c):04x}" if unicodedata.category(c) in ("Cc", "Cf", "Cs", "Zl", "Zp") else c
            for c in value
        )
    if isinstance(value, list):
        return [visible(item) for item in value]
    if isinstance(value, dict):
        return {visible(key): visible(item) for key, item in value.items()}
    return value


def quote(output: bytes) -> str:
    """The end of a program's output, for a message."""
    text = visible(output[-4 * LONGEST_QUOTE :].decode("utf-8", "replace").strip())
    return text if len(text) <= LONGEST_QUOTE else "..." + text[-LONGEST_QUOTE:]


def member(result: dict, name: str, kind: type | tuple):
    """A member of a result. Raises Failure where it is missing or of another type."""
    value = result.get(name)
    if not isinstance(value, kind) or (isinstance(value, bool) and kind is int):
        raise Failure(
            "unexpected-result", f"the result of qxconf has no usable member {name}", None, result
        )
    return value


class Qxconf:
    """The program, with the options that every command gets."""

    def __init__(self, executable: str, options: list[str], timeout: int, folder: str) -> None:
        self._command = [executable, "--json", "--quiet", *options]
        self._timeout = timeout
        self._folder = folder
        self.process_id = 0  # of the last command
        self.warnings: list[str] = []  # of all commands that succeeded

    def run(self, *arguments: str, opens_keyboard: bool = True) -> dict:
        """The result of a command. Raises Failure."""
        name = f"qxconf {arguments[0]}"
        timeout = self._timeout if opens_keyboard else max(self._timeout, SECONDS_FOR_RECORDS)
        status, output, errors = self._run_process(name, arguments, timeout)
        result = self._read(output)
        if result is not None and isinstance(result.get("error"), dict):
            error = result["error"]
            if isinstance(error.get("code"), str) and isinstance(error.get("message"), str):
                raise Failure(error["code"], error["message"], status, result)
        said = quote(errors) or quote(output) or "nothing"
        if status < 0:
            raise Failure("killed", f"{name} was killed by {signal_name(-status)}", status)
        if status != 0:
            raise Failure(
                "unexpected-result",
                f"{name} ended with status {status} and no readable error; it printed: {said}",
                status,
            )
        if result is None or "error" in result:
            raise Failure(
                "unexpected-result",
                f"{name} ended with status 0 and no readable result; it printed: "
                + (quote(output) or "nothing"),
                status,
            )
        for line in errors.decode("utf-8", "replace").splitlines():
            if line.strip() and visible(line) not in self.warnings:
                self.warnings.append(visible(line))
        return result

    def _run_process(self, name: str, arguments: tuple, timeout: int) -> tuple[int, bytes, bytes]:
        # Files, not pipes: a child that outlives qxconf cannot hold them open.
        with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
            self.process_id = 0
            try:
                process = subprocess.Popen(
                    [*self._command, *arguments],
                    cwd=self._folder,
                    stdin=subprocess.DEVNULL,
                    stdout=output,
                    stderr=errors,
                    start_new_session=True,
                )
            except (OSError, ValueError) as error:
                raise Failure(
                    "qxconf-not-started", f"{visible(self._command[0])} cannot be run: {error}"
                ) from error
            self.process_id = process.pid
            try:
                status = process.wait(timeout)
            except subprocess.TimeoutExpired:
                self._end(process)
                raise Failure(
                    "timeout", f"{name} did not end within {timeout} s and was ended"
                ) from None
            output.seek(0)
            errors.seek(0)
            return status, output.read(), errors.read()

    @staticmethod
    def _end(process: subprocess.Popen) -> None:
        process.terminate()
        try:
            process.wait(SECONDS_TO_END)
        except subprocess.TimeoutExpired:
            pass
        try:
            os.killpg(process.pid, signal.SIGKILL)  # and its children
        except ProcessLookupError:
            pass
        process.wait()

    @staticmethod
    def _read(output: bytes) -> dict | None:
        try:
            result = json.loads(output.decode("utf-8"))
        except (ValueError, RecursionError):
            return None
        if not isinstance(result, dict) or result.get("schema") != 1:
            return None
        return visible(result)


def signal_name(number: int) -> str:
    """A signal in words: signal 9 (SIGKILL)."""
    try:
        return f"signal {number} ({signal.Signals(number).name})"
    except ValueError:
        return f"signal {number}"
