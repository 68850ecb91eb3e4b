#!/usr/bin/env python3
"""Runs editor-line on a screen of its own, edits bidirectional text with keys and mouse, and reads what it prints.

    check-editor.py EDITOR_LINE
"""
import select
import subprocess
import sys

from windows import PATIENCE, SELECTION, Screen, Window

SHALOM = "\u05E9\u05DC\u05D5\u05DD"
NI = "\u0928\u093F"  # two code points, one cluster
TEXT = f"ab {SHALOM} {NI}"


class Editor:
    """The program with TEXT in its line and in its clipboard."""

    def __init__(self, program, screen):
        self._process = subprocess.Popen([program, TEXT], env=screen.environment, stdout=subprocess.PIPE,
                                         encoding="utf-8")
        self.window = Window(screen, "editor-line")
        self.ink, self._first = self.window.wait_for("the text", lambda ink, _: ink[2] - ink[0] > 50)
        self.middle = (self.ink[1] + self.ink[3]) // 2
        self.window.press("ctrl+a", "ctrl+c", "Return")
        self.expect("the first line", TEXT)

    def expect(self, what, line):
        ready, _, _ = select.select([self._process.stdout], [], [], PATIENCE)
        assert ready, f"{what}: nothing printed"
        printed = self._process.stdout.readline().removesuffix("\n")
        print(f"{what}: {printed}")
        assert printed == line, f"{what}: printed {printed!r}, not {line!r}"

    def check_keys(self, what, keys, typed, line):
        """Presses keys in a line that holds TEXT, with the caret at its beginning."""
        self.window.press("ctrl+v", "Home", *keys)
        if typed:
            self.window.type(typed)
        self.window.press("Return")
        self.expect(what, line)

    def show_text(self):
        """Puts TEXT into the empty line and waits until the window shows it."""
        self.window.press("ctrl+v")
        self.window.wait_for("the pasted text", lambda ink, p: ink[2] >= self.ink[2] - 2 and
                             p.count_bands(SELECTION) == 0)

    def close(self):
        self.window.press("Escape")
        return self._process.wait(timeout=PATIENCE)


def check_keys(editor):
    editor.check_keys("typing at the beginning", [], "xy", f"xy{TEXT}")
    editor.check_keys("typing at the end", ["End"], "xy", f"{TEXT}xy")
    editor.check_keys("Backspace takes a cluster", ["End", "BackSpace"], "", f"ab {SHALOM} ")
    editor.check_keys("Delete takes a cluster", ["Delete"], "", TEXT[1:])
    editor.check_keys("Right goes to the right in Hebrew", ["Right"] * 4, "-",
                      f"ab {SHALOM[:3]}-{SHALOM[3:]} {NI}")
    editor.check_keys("Left goes back", ["Right"] * 4 + ["Left"] * 2, "-", f"ab- {SHALOM} {NI}")
    editor.check_keys("Ctrl goes by words", ["ctrl+Right"] * 2, "-", f"ab {SHALOM}- {NI}")
    editor.check_keys("Ctrl goes back by words", ["End", "ctrl+Left"], "-", f"ab {SHALOM} -{NI}")
    editor.check_keys("Shift selects", ["shift+Right"] * 2, "-", f"- {SHALOM} {NI}")
    editor.check_keys("Right leaves a selection", ["shift+ctrl+Right", "Right"], "-", f"ab- {SHALOM} {NI}")
    editor.check_keys("cut and pasted", ["shift+ctrl+Right", "ctrl+x", "End", "ctrl+v"], "", f" {SHALOM} {NI}ab")
    editor.check_keys("the clipboard now", ["ctrl+a", "BackSpace", "ctrl+v"], "", "ab")


def check_mouse(editor):
    left, right = (editor.ink[0], editor.middle), (editor.ink[2] + 20, editor.middle)
    editor.show_text()
    editor.window.drag(left, right)
    editor.window.wait_for("all selected", lambda _, p: p.count_bands(SELECTION) >= 1)
    editor.window.type("-")
    editor.window.press("Return")
    editor.expect("dragged over the line", "-")

    editor.show_text()
    editor.window.click(left[0] + 4, left[1], count=2)
    editor.window.type("-")
    editor.window.press("Return")
    editor.expect("double click on a word", f"- {SHALOM} {NI}")

    editor.show_text()
    editor.window.click(*left)
    editor.window.press("shift+End", "BackSpace")
    editor.window.type("-")
    editor.window.press("Return")
    editor.expect("from the click to the end", "-")


def check_selection(editor):
    editor.show_text()
    editor.window.press("Home", "shift+ctrl+Right", "shift+Right", "shift+Right")
    # Right enters the Hebrew word at its last letter, which is not selected and stands between the others.
    editor.window.wait_for("a selection in two parts", lambda _, p: p.count_bands(SELECTION) == 2)
    editor.window.press("ctrl+a", "BackSpace")


def main():
    with Screen() as screen:
        editor = Editor(sys.argv[1], screen)
        check_mouse(editor)
        check_selection(editor)
        check_keys(editor)
        status = editor.close()
    assert status == 0, f"editor-line ended with {status}"


if __name__ == "__main__":
    main()
