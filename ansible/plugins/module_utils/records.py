# Copyright (c) 2026 The QXControls authors
# MIT License (see LICENSE)
"""A write in the records of qxconf: its receipt, and whether it was interrupted."""

from __future__ import annotations

import datetime

from ansible_collections.qxcontrols.keyboards.plugins.module_utils.qxconf import (
    Failure,
    Qxconf,
    member,
)

UNCHANGED = "unchanged"
WRITTEN = "written"
PARTLY_WRITTEN = "partly written"
UNKNOWN = "unknown"

# Codes of failures before a write begins.
REFUSALS = {
    "usage",
    "document-invalid",
    "layout-invalid",
    "model-invalid",
    "interrupted",
    "qxconf-not-started",
}
# The member "holds" of an error.
STATE_BY_HOLDS = {
    "not-touched": UNCHANGED,
    "old": UNCHANGED,
    "new": WRITTEN,
    "partly-written": PARTLY_WRITTEN,
}
STATE_BY_RECEIPT = {
    "verified": WRITTEN,
    "written": WRITTEN,
    "nothing changed": UNCHANGED,
    "partly written": PARTLY_WRITTEN,
    "differs": PARTLY_WRITTEN,
}
STATE_BY_TRACE = {"partial": PARTLY_WRITTEN, "before": UNCHANGED, "after": WRITTEN}


def receipt_of(qxconf: Qxconf, backup: str) -> dict | None:
    """The receipt of the write before which this backup was made."""
    for receipt in listed(qxconf, "receipts", "receipts"):
        if receipt.get("backup") == backup:
            return receipt
    return None


def state_after(
    failure: Failure, qxconf: Qxconf, started: datetime.datetime, documents: set[str | None]
) -> str:
    """The keyboard's state after a failed write of one of the documents, begun since then.

    The error of qxconf shows it. If qxconf has ended without one, its records do: a write is on
    record before its first byte, so where nothing is on record nothing was sent. The keyboard
    itself is read only for a write that was cut.
    """
    if failure.code == "write-interrupted":
        return PARTLY_WRITTEN  # by an earlier write
    holds = failure.error.get("holds")
    if holds is not None:
        return STATE_BY_HOLDS.get(str(holds), UNKNOWN)
    if failure.code in REFUSALS:
        return UNCHANGED
    process = str(qxconf.process_id)  # which the names of all its records have
    try:
        receipts = since(started, listed(qxconf, "receipts", "receipts"))
        writes = since(started, listed(qxconf, "onRecord", "recover", "--list"))
        own = [r for r in receipts if process in str(r.get("backup")).split("-")]
        if own:
            newest = max(own, key=lambda receipt: str(receipt.get("time")))
            return STATE_BY_RECEIPT.get(str(newest.get("result")), UNKNOWN)
        ids = {w.get("id") for w in writes if process in str(w.get("id")).split("-")}
        if not ids:
            # Where a script has started qxconf, its process is not known.
            others = any(record.get("document") in documents for record in receipts + writes)
            return UNKNOWN if others else UNCHANGED
        for write in listed(qxconf, "onRecord", "recover"):
            if write.get("id") in ids:
                return STATE_BY_TRACE.get(str(write.get("trace")), UNKNOWN)
    except Failure:
        pass
    return UNKNOWN


def listed(qxconf: Qxconf, name: str, *command: str) -> list[dict]:
    """A command's list of records. Raises Failure."""
    opens_keyboard = command == ("recover",)
    records = member(qxconf.run(*command, opens_keyboard=opens_keyboard), name, list)
    return [record for record in records if isinstance(record, dict)]


def since(started: datetime.datetime, records: list[dict]) -> list[dict]:
    """The records from then on, and those whose time cannot be read."""
    return [record for record in records if is_since(started, record.get("time"))]


def is_since(started: datetime.datetime, time: object) -> bool:
    try:
        read = datetime.datetime.strptime(str(time), "%Y-%m-%dT%H:%M:%S.%fZ")
    except ValueError:
        return True
    cut_off = datetime.timedelta(milliseconds=1)  # of the record's time
    return read.replace(tzinfo=datetime.timezone.utc) >= started - cut_off
