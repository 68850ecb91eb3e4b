"""Real windows on an X server without a monitor: presses keys, moves the mouse, and looks at what the window shows."""
import os
import struct
import subprocess
import time

PATIENCE = 60  # seconds, on a busy machine
FIGURES_TOP = 300  # in live-text, the text stays above, the figures of the caches below
WHITE = 0xFFFFFF
SELECTION = 0xBED7FA  # what lies below selected text


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

    def count_bands(self, color):
        """How many groups of neighbouring columns have pixels of the colour."""
        columns = [any(row[x] == color for row in self.text) for x in range(self.width)]
        return sum(is_in and not was_in for was_in, is_in in zip([False, *columns], columns))

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
    def __init__(self, screen, name):
        self._screen = screen
        found = screen.run("xdotool", "search", "--sync", "--onlyvisible", "--name", f"^{name}$")
        self._id = found.decode().split()[0]
        screen.run("xdotool", "mousemove", "--window", self._id, "10", "10")  # keys go where the pointer is

    def press(self, *keys):
        self._screen.run("xdotool", "key", *keys)

    def type(self, text):
        self._screen.run("xdotool", "type", text)

    def move_mouse(self, x, y):
        self._screen.run("xdotool", "mousemove", "--sync", "--window", self._id, str(x), str(y))

    def click(self, x, y, count=1):
        self.move_mouse(x, y)
        self._screen.run("xdotool", "click", "--repeat", str(count), "--delay", "20", "1")

    def drag(self, start, end):
        self.move_mouse(*start)
        self._screen.run("xdotool", "mousedown", "1")
        self.move_mouse((start[0] + end[0]) // 2, start[1])  # SDL wants to see the mouse on its way
        self.move_mouse(*end)
        self._screen.run("xdotool", "mouseup", "1")

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


def check_program(command, title, check):
    """Runs a program on a screen of its own, checks its window of this title, and closes the window."""
    with Screen() as screen:
        program = subprocess.Popen(command, env=screen.environment)
        try:
            check(Window(screen, title))
        finally:
            program.terminate()  # asks the window to close
            status = program.wait(timeout=PATIENCE)
    assert status == 0, f"{title} ended with {status}"
