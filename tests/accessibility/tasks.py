#!/usr/bin/env python3
"""Does the tasks of docs/interactions.md through the accessibility bus alone.

usage: tasks.py QX_CONFIGURATOR QXCONF LAYOUTS

Expects a session bus, an X server and the accessibility bus (see `run` beside this file); judges by
what the keyboard holds in the end.
"""
import json
import os
import subprocess
import sys
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 60  # seconds until something that is waited for must be there


def until(wanted, what):
    end = time.monotonic() + PATIENCE
    while True:
        try:
            found = wanted()
            if found:
                return found
        except GLib.Error:  # an object that has just gone
            pass
        if time.monotonic() > end:
            raise SystemExit(f"not found: {what}")
        time.sleep(0.05)


def walk(root):
    for i in range(root.get_child_count()):
        child = root.get_child_at_index(i)
        if child is not None:
            yield child
            yield from walk(child)


def shown(node):
    return node.get_state_set().contains(Atspi.StateType.SHOWING)


class App:
    def __init__(self, program, arguments):
        self.process = subprocess.Popen([program, *arguments])
        self.root = until(self._root, program)

    def _root(self):
        desktop = Atspi.get_desktop(0)
        for i in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(i)
            if child is not None and child.get_process_id() == self.process.pid:
                return child
        return None

    def find(self, name, role=None, within=None):
        """The shown object with this name, or whose name begins with it if that ends in `*`."""

        def look():
            for node in walk(within or self.root):
                text = node.get_name() or ""
                fits = text.startswith(name[:-1]) if name.endswith("*") else text == name
                if fits and (role is None or node.get_role_name() == role) and shown(node):
                    return node
            return None

        return until(look, f"{role or 'object'} {name!r}")

    def gone(self, name):
        """Waits until no shown object has this name."""
        until(lambda: not any(node.get_name() == name and shown(node) for node in walk(self.root)),
              f"the end of {name!r}")

    def act(self, name, action="Press", role=None, within=None):
        node = self.find(name, role, within)
        for i in range(node.get_n_actions()):
            if Atspi.Action.get_action_name(node, i) == action:
                try:
                    node.do_action(i)
                except GLib.Error:  # a menu or dialog answers when it is left
                    pass
                return
        raise SystemExit(f"{name!r} has no action {action}")

    def describe(self):
        """Everything that is shown, for a task that fails."""
        return "\n".join(f"{node.get_role_name()} {node.get_name()!r}" for node in walk(self.root)
                         if shown(node))

    def page(self, title):
        self.act(title, "Toggle", "list item")

    def type(self, field, text):
        self.find(field, "text").set_text_contents(text)

    def choose(self, *path):
        """Walks down a menu of the menu bar, and leaves it."""
        for title in path[:-1]:
            self.act(title, "ShowMenu", "menu item")
        self.act(path[-1], "Press", "menu item")
        self.act(path[0], "ShowMenu", "menu item")

    def select(self, first, *others):
        self.act(first)
        for other in others:
            self.act(other, "Toggle")

    def write(self):
        self.act("Write to keyboard")
        self.act("Write to keyboard", within=self.find("*", "dialog"))
        self.find("In sync")


def one_character(app):
    app.page("Free keys")
    app.act("Key 75 (Ins)*")
    app.act("Key A")


def a_chord(app):
    app.act("Key 76 (Del)*")
    app.act("Ctrl", "Toggle", "check box")
    app.act("Key A")


def text_and_enter(app):
    app.act("Key 80 (Home)*")
    app.type("Text to type", "10")
    app.act("Add + Enter")


def one_key_to_twelve(app):
    app.act("Key 75 (Ins)*")
    app.choose("Edit", "Copy")
    app.select(*(f"Key {111 + i} (F{i})*" for i in range(1, 13)))
    app.act("Paste into all")
    app.find("Pasted into 12 keys.")


def two_layers(app):
    app.page("Layered function keys")
    app.act("F4, not programmed*")
    app.act("Key A")
    app.gone("Pasted into 12 keys.")  # its Undo would now undo this edit
    app.choose("Edit", "Copy or swap layer", "Swap with layer", "9")
    app.find("Layers 0 and 9 have been swapped.")


def four_pos_keys(app):
    app.page("POS keys")
    app.select("Key 1 *", "Key 2 *", "Key 16 *", "Key 17 *")
    app.act("Join", role="push button")
    app.gone("Layers 0 and 9 have been swapped.")
    app.find("4 keys joined.")
    app.act("Key A")
    app.gone("4 keys joined.")


TASKS = (one_character, a_chord, text_and_enter, one_key_to_twelve, two_layers, four_pos_keys)

A = [31, 159]
HELD = {
    "freeProgKeys": {75: A, 76: [58, 31, 159, 186], 80: [2, 130, 11, 139, 43, 171],
                     **{code: A for code in range(112, 124)}},
    "layeredFuncKeys": {(9, 3): A},
    "pos": {(1, 2, 16, 17): A},
}


def held(qxconf, keyboard):
    """The keyboard's settings, in the form of HELD."""
    document = json.loads(subprocess.run([qxconf, "--keyboard", keyboard, "upload"], check=True,
                                         stdout=subprocess.PIPE).stdout)
    return {
        "freeProgKeys": {key["positionCode"]: key["sequence"]
                         for key in document["freeProgKeys"]["keys"]},
        "layeredFuncKeys": {(key["layer"], key["key"]): key["sequence"]
                            for key in document["layeredFuncKeys"]["keys"]},
        "pos": {tuple(block["keys"]): block["sequence"] for block in document["pos"]["blocks"]},
    }


def main():
    program, qxconf, layouts = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        keyboard = os.path.join(folder, "keyboard.qxk")
        app = App(program, ["--keyboard", keyboard, "--model", "full", "--layouts", layouts,
                            "--settings", os.path.join(folder, "settings.ini"), "--start", "read"])
        try:
            for task in TASKS:
                try:
                    task(app)
                except SystemExit:
                    print(app.describe(), file=sys.stderr)
                    raise
                print("done:", task.__name__, flush=True)
            app.write()
        finally:
            app.process.kill()
            app.process.wait()
        found = held(qxconf, keyboard)
        if found != HELD:
            raise SystemExit(f"the keyboard holds {found}, not {HELD}")


main()
