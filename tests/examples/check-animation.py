#!/usr/bin/env python3
"""Runs moving-axis on a screen of its own, and looks at what the window shows.

    check-animation.py MOVING_AXIS
"""
import sys

from windows import check_program, get_ink


def check_movement(window):
    _, first = window.wait_for("the text and the figures", lambda _, p: get_ink(p.figures) is not None)
    _, second = window.wait_for("another weight", lambda _, p: p.text != first.text)
    window.wait_for("a third one", lambda _, p: p.text not in (first.text, second.text) and
                    p.figures != first.figures)


if __name__ == "__main__":
    check_program([sys.argv[1]], "moving-axis", check_movement)
