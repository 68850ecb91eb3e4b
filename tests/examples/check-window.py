#!/usr/bin/env python3
"""Runs live-text on a screen of its own, presses keys, drags the mouse, and looks at what the window shows.

    check-window.py LIVE_TEXT
"""
import sys

from windows import SELECTION, check_program, get_ink


def check_keys(window):
    plain, first = window.wait_for("the text and the figures", lambda _, p: get_ink(p.figures) is not None)

    window.type("mn")
    _, typed = window.wait_for("more text", lambda ink, _: ink[2] > plain[2] + 30 and ink[0] == plain[0])
    assert typed.figures != first.figures, "the figures did not count the new glyphs"
    window.press("BackSpace", "BackSpace")
    window.wait_for("the first text again", lambda _, p: p.text == first.text)

    window.press("Tab")
    window.wait_for("outlines", lambda ink, p: p.text != first.text and
                    all(abs(a - b) <= 2 for a, b in zip(ink, plain)))
    window.press("Tab")
    window.wait_for("bitmaps again", lambda _, p: p.text == first.text)

    window.press("Up", "Up", "Up")
    window.wait_for("larger text", lambda ink, _: ink[2] - ink[0] > 1.9 * (plain[2] - plain[0]))
    window.press("Down", "Down", "Down", "Right", "Right", "Right", "Right")
    window.wait_for("turned text", lambda ink, _: ink[3] - ink[1] > 2 * (plain[3] - plain[1]) and ink[2] < plain[2])
    window.press("Left", "Left", "Left", "Left", "Prior", "Prior")
    window.wait_for("twice the pixels", lambda ink, _: all(abs(a - 2 * b) <= 4 for a, b in zip(ink, plain)))

    window.press("Next", "Next")
    window.wait_for("the first text once more", lambda _, p: p.text == first.text)


def check_caret(window):
    ink, plain = window.wait_for("the text", lambda _, p: p.count_bands(SELECTION) == 0)
    window.press("Home")
    _, at_begin = window.wait_for("the caret at the beginning", lambda _, p: p.text != plain.text)
    window.press("ctrl+Right")
    window.wait_for("the caret further to the right", lambda _, p: p.text not in (plain.text, at_begin.text))
    window.press("ctrl+Left", "shift+End")
    window.wait_for("all letters selected", lambda _, p: p.count_bands(SELECTION) >= 1)
    window.press("Home")
    window.wait_for("no selection", lambda _, p: p.text == at_begin.text)

    middle = (ink[1] + ink[3]) // 2
    window.drag((ink[0] + 1, middle), (ink[2] + 50, middle))
    window.wait_for("a dragged selection", lambda _, p: p.count_bands(SELECTION) >= 1)
    window.press("BackSpace")
    window.wait_for("only the caret", lambda seen, _: seen[2] - seen[0] < 10)
    window.type("word " * 12)
    window.wait_for("a second line", lambda seen, _: seen[3] - seen[1] > 1.8 * (ink[3] - ink[1]))


def check_all(window):
    check_keys(window)
    check_caret(window)


if __name__ == "__main__":
    check_program([sys.argv[1], "Live text"], "live-text", check_all)
