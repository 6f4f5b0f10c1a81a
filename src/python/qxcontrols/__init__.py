"""Program modular point-of-sale keyboards from Python.

A document is what ``qxconf upload`` writes, as a dictionary::

    import qxcontrols

    document = qxcontrols.load("till.json")
    with qxcontrols.Keyboard(driver="libtill.so") as keyboard:
        plan = keyboard.plan(document, variables={"till": "042"})
        for change in plan.changes:
            print(change)
        result = keyboard.write(plan)

Every write saves a backup, checks that the keyboard is still the one that was planned for, and
reads back what it has written. Whatever goes wrong raises :class:`Error`.
"""

from __future__ import annotations

import json
import os
from collections.abc import Callable, Mapping
from dataclasses import dataclass
from types import TracebackType
from typing import Any, Optional, Union

from . import _core

__all__ = ["Change", "Error", "Fault", "Keyboard", "Plan", "Result", "check", "load", "save",
           "schema"]

Document = Mapping[str, Any]
Path = Union[str, "os.PathLike[str]"]
Progress = Callable[[str, int], None]


@dataclass(frozen=True)
class Fault:
    """A fault of a document."""

    place: str  #: a JSON pointer into the document
    code: str  #: its name for programs, "not-a-number"
    message: str  #: for people

    def __str__(self) -> str:
        return f"{self.place}: {self.message}"


class Error(Exception):
    """A failure; ``str(error)`` is a sentence for people.

    The codes and the other attributes are those of qxconf's results. An attribute is None where
    it does not apply.
    """

    def __init__(self, message: str, *, code: str, holds: Optional[str] = None,
                 file: Optional[str] = None, place: Optional[str] = None,
                 section: Optional[str] = None, address: Optional[int] = None,
                 function: Optional[str] = None, status: Optional[int] = None,
                 backup: Optional[str] = None,
                 faults: "list[tuple[str, str, str]]" = []) -> None:
        super().__init__(message)
        self.code = code  #: its kind: "transfer-failed", "document-invalid", ...
        #: The keyboard's contents after a failed write: "not-touched" or "old" (as before), "new",
        #: "partly-written" or "unknown".
        self.holds = holds
        self.file = file
        self.place = place  #: a JSON pointer into the document
        self.section = section
        self.address = address  #: in the keyboard's memory
        self.function = function  #: the driver's function that failed
        self.status = status  #: its status
        self.backup = backup  #: what the keyboard held before, for :meth:`Keyboard.plan_restore`
        self.faults = [Fault(*fault) for fault in faults]  #: all of the document's


@dataclass(frozen=True)
class Change:
    """A setting that a write changes."""

    place: str  #: a JSON pointer into documents
    setting: str
    before: str
    after: str

    def __str__(self) -> str:
        return f"{self.setting}: {self.before} → {self.after}"


@dataclass(frozen=True)
class Plan:
    """The changes that a write would make; valid for the keyboard that planned it, as it is now."""

    changes: "list[Change]"
    bytes: int  #: to send
    _planned: _core.PlannedWrite

    def __bool__(self) -> bool:
        """Whether there is anything to write."""
        return self.bytes > 0


@dataclass(frozen=True)
class Result:
    """The result of a write."""

    written: bool  #: False if the keyboard held everything already
    verified: bool  #: the keyboard was read back and holds everything
    bytes: int  #: sent
    backup: Optional[str]  #: what the keyboard held before, for :meth:`Keyboard.plan_restore`


class Keyboard:
    """A keyboard, open between ``with`` and the end of its block.

    Without ``driver`` it is simulated: kept in ``file``, which is made for a new keyboard of
    ``model`` ("full", "magnet", "x1-4620"), or in the user's data folder. ``layout`` is a file
    name of ``layouts`` or a language id. Backups, journal and receipts go into ``records``; by
    default they are those of qxconf.

    An object is used by one thread at a time; other threads run during transfers.
    """

    def __init__(self, *, driver: Path = "", file: Path = "", model: str = "", layout: str = "",
                 layouts: Path = "", records: Path = "") -> None:
        self._core = _core.Keyboard(driver=os.fspath(driver), file=os.fspath(file), model=model,
                                    layouts=os.fspath(layouts), layout=layout,
                                    records=os.fspath(records))

    def open(self) -> None:
        """Start up the keyboard."""
        self._core.open()

    def close(self) -> None:
        """Return the keyboard to its normal state."""
        self._core.close()

    def __enter__(self) -> "Keyboard":
        self.open()
        return self

    def __exit__(self, kind: Optional["type[BaseException]"], error: Optional[BaseException],
                 trace: Optional[TracebackType]) -> None:
        self.close()

    def identify(self) -> "dict[str, Any]":
        """Name, versions and capabilities, as in a document's member ``keyboard``."""
        return dict(json.loads(self._core.identify()))

    def read(self) -> "dict[str, Any]":
        """The document of all settings.

        Raises an Error with the code "keyboard-damaged" if a part cannot be expressed in a
        document.
        """
        reading = self._core.read()
        if reading.damaged:
            raise Error("; ".join(reading.damaged), code="keyboard-damaged")
        return dict(json.loads(reading.document))

    def plan(self, document: Document, *, name: str = "document",
             variables: Mapping[str, str] = {}, skip_absent: bool = False, full: bool = False,
             repair: bool = False) -> Plan:
        """Plan a write of the document; nothing is written.

        ``variables`` replace the document's placeholders. ``skip_absent`` leaves out sections that
        the keyboard lacks, ``full`` sends every byte, changed or not, and ``repair`` replaces
        damaged blocks. ``name`` is the document's in records and errors.
        """
        return _plan(self._core.plan(json.dumps(document), name, dict(variables), skip_absent,
                                     full, repair))

    def plan_restore(self, backup: str, *, other_keyboard: bool = False) -> Plan:
        """Plan the restoring of a backup; with ``other_keyboard`` it may be that of another
        keyboard of this model."""
        return _plan(self._core.plan_restore(backup, other_keyboard))

    def write(self, plan: Plan, *, verify: bool = True,
              progress: Optional[Progress] = None) -> Result:
        """Write as planned.

        ``progress`` is called with a step and its percentage. With ``verify`` the keyboard is read
        back and compared.
        """
        return Result(**json.loads(self._core.write(plan._planned, verify, progress)))

    def interrupted(self) -> "list[str]":
        """The ids of interrupted writes that this keyboard holds a part of, newest first."""
        return list(self._core.interrupted())

    def finish(self, id: str, *, progress: Optional[Progress] = None) -> Result:
        """Write the rest of an interrupted write."""
        return Result(**json.loads(self._core.recover(id, True, progress)))

    def roll_back(self, id: str, *, progress: Optional[Progress] = None) -> Result:
        """Restore what the keyboard held before an interrupted write."""
        return Result(**json.loads(self._core.recover(id, False, progress)))


def _plan(planned: _core.PlannedWrite) -> Plan:
    return Plan([Change(**change) for change in json.loads(planned.changes)], planned.bytes,
                planned)


def load(path: Path) -> "dict[str, Any]":
    """The document in this file. Only its syntax is checked: see :func:`check`."""
    with open(path, encoding="utf-8") as file:
        return dict(json.load(file))


def save(document: Document, path: Path) -> None:
    """Write the document to a file, which is replaced as a whole."""
    unfinished = f"{os.fspath(path)}.{os.getpid()}"
    try:
        with open(unfinished, "w", encoding="utf-8") as file:
            json.dump(document, file, indent=2, ensure_ascii=False)
            file.write("\n")
            file.flush()
            os.fsync(file.fileno())
        os.replace(unfinished, path)
    except BaseException:
        if os.path.exists(unfinished):
            os.remove(unfinished)
        raise


def check(document: Document, *, name: str = "document", variables: Mapping[str, str] = {},
          layout: str = "", layouts: Path = "") -> None:
    """Check a document without a keyboard. Raises an Error with all faults."""
    _core.check(json.dumps(document), name, dict(variables), os.fspath(layouts), layout)


def schema() -> "dict[str, Any]":
    """The JSON Schema of documents."""
    return dict(json.loads(_core.schema()))
