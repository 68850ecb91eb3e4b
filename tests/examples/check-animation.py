#!/usr/bin/env python3
"""Runs moving-axis on a screen of its own, and looks at what the window shows.

    check-animation.py MOVING_AXIS
"""
import subprocess
import sys

from windows import PATIENCE, Screen, Window, get_ink


def check_movement(window):
    _, first = window.wait_for("the text and the figures", lambda _, p: get_ink(p.figures) is not None)
    _, second = window.wait_for("another weight", lambda _, p: p.text != first.text)
    window.wait_for("a third one", lambda _, p: p.text not in (first.text, second.text) and
                    p.figures != first.figures)


def main():
    with Screen() as screen:
        program = subprocess.Popen([sys.argv[1]], env=screen.environment)
        try:
            check_movement(Window(screen, "moving-axis"))
        finally:
            program.terminate()  # asks the window to close
            status = program.wait(timeout=PATIENCE)
    assert status == 0, f"moving-axis ended with {status}"


if __name__ == "__main__":
    main()
