#!/usr/bin/env python3
"""Runs live-text on a screen of its own, presses keys, and looks at what the window shows.

    check-window.py LIVE_TEXT
"""
import os
import struct
import subprocess
import sys
import time

PATIENCE = 60  # seconds, on a busy machine
FIGURES_TOP = 300  # the text stays above, the figures of the caches below
WHITE = 0xFFFFFF


class Screen:
    """An X server without a monitor. The environment of the programs that shall draw on it is `environment`."""

    def __enter__(self):
        reading, writing = os.pipe()
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1024x768x24", "-nolisten", "tcp"],
            pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as pipe:
            display = pipe.readline().strip()
        assert display, "Xvfb did not start"
        self.environment = {**os.environ, "DISPLAY": f":{display}", "SDL_VIDEODRIVER": "x11"}
        return self

    def __exit__(self, *_):
        self._server.terminate()
        self._server.wait()

    def run(self, *command):
        return subprocess.run(command, env=self.environment, check=True, capture_output=True, timeout=PATIENCE).stdout


class Picture:
    """The pixels of a window, as xwd dumps them: 24 bits of colour in words of 32."""

    def __init__(self, dump):
        header = struct.unpack(">25I", dump[:100])
        self.width, self.height, stride = header[4], header[5], header[12]
        assert header[11] == 32 and header[7] == 0, "not a screen of 32 bits a pixel, lowest byte first"
        start = header[0] + 12 * header[19]
        self._rows = [
            [pixel & WHITE for pixel in struct.unpack_from(f"<{self.width}I", dump, start + y * stride)]
            for y in range(self.height)]

    @property
    def text(self):
        return self._rows[:FIGURES_TOP]

    @property
    def figures(self):
        return self._rows[FIGURES_TOP:]


def get_ink(rows):
    """Left, top, right and bottom of what is not white, right and bottom inclusive; None where all is."""
    inked = [(x, y) for y, row in enumerate(rows) if any(p != WHITE for p in row)
             for x, p in enumerate(row) if p != WHITE]
    if not inked:
        return None
    columns, lines = zip(*inked)
    return min(columns), min(lines), max(columns), max(lines)


class Window:
    def __init__(self, screen):
        self._screen = screen
        found = screen.run("xdotool", "search", "--sync", "--onlyvisible", "--name", "^live-text$")
        self._id = found.decode().split()[0]
        screen.run("xdotool", "mousemove", "--window", self._id, "10", "10")  # keys go where the pointer is

    def press(self, *keys):
        self._screen.run("xdotool", "key", *keys)

    def type(self, text):
        self._screen.run("xdotool", "type", text)

    def wait_for(self, what, condition):
        """The first picture that fulfils the condition, which gets the ink of the text and the picture."""
        end = time.monotonic() + PATIENCE
        while True:
            picture = Picture(self._screen.run("xwd", "-silent", "-id", self._id))
            is_painted = picture.text[0][0] == WHITE  # black until the program has drawn
            ink = get_ink(picture.text) if is_painted else None
            if ink is not None and condition(ink, picture):
                print(f"{what}: ink {ink}")
                return ink, picture
            assert time.monotonic() < end, f"{what}: not seen, ink {ink}"
            time.sleep(0.1)


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


def main():
    with Screen() as screen:
        program = subprocess.Popen([sys.argv[1], "Live text"], env=screen.environment)
        try:
            check_keys(Window(screen))
        finally:
            program.terminate()  # asks the window to close
            status = program.wait(timeout=PATIENCE)
    assert status == 0, f"live-text ended with {status}"


if __name__ == "__main__":
    main()
