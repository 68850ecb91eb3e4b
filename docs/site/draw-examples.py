#!/usr/bin/env python3
"""Runs the built examples and writes a page for each: what it says of itself, what it drew, and its source.

    draw-examples.py PROGRAMS FOLDER    PROGRAMS holds the built examples; the pages and pictures go to FOLDER

An example that is not built, or a window on a machine without a virtual screen, has a page without a picture.
"""
import importlib.util
import re
import shutil
import struct
import subprocess
import sys
import zlib
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
# The arguments of each example; what ends in .png or .pdf is what it draws, what begins with FONT
# stands for the file of an installed font.
ARGUMENTS = {
    "string-to-png": ["Hello, text", "string-to-png.png"],
    "break-paragraph": ["280", "The library measures and draws lines. Breaking a paragraph into lines is the work of "
                        "whoever draws it: no line is wider than the edge on the right.", "break-paragraph.png"],
    "fonts-from-memory": ["FONT DejaVu Serif:Book", "FONT DejaVu Serif:Bold", "fonts-from-memory.png"],
    "texture-atlas": ["Packed once, drawn often", "texture-atlas-texture.png", "texture-atlas.png",
                      "\U0001F600\U0001F680\U0001F33B\U0001F600", "texture-atlas-colors.png"],
    "text-to-pdf": ["Vector text", "text-to-pdf.pdf"],
    "two-threads": ["two-threads.png"],
    "moving-axis": ["--frames", "38", "moving-axis.png"],
    "mixed-scripts": ["460", "mixed-scripts.png", "mixed-scripts.pdf"],
}
# The texts that windows show.
WINDOWS = {
    "live-text": "Live text, \u05D7\u05D9 12 \u0628\u0627\u0644\u0639\u0631\u0628\u064A\u0629, is wrapped where "
                 "the window ends",
    "editor-line": "Edit \u05D0\u05D5\u05EA\u05D9 12 \u0628\u0627\u0644\u0639\u0631\u0628\u064A\u0629 here",
}
WINDOW_TOOLS = ("Xvfb", "xdotool", "xwd")


def list_sources(name):
    """The sources of an example, the one that describes it first."""
    folder = ROOT / "examples"
    own = [folder / f"{name}.cpp"]
    if (folder / name).is_dir():
        own = sorted((folder / name).iterdir(), key=lambda path: (path.name != "main.cpp", path.name))
    text = "".join(path.read_text(encoding="utf-8") for path in own)
    return own + [path for path in sorted(folder.glob("*.h"))
                  if re.search(rf'#include "(\.\./)?{re.escape(path.name)}"', text)]


def read_description(source):
    """The comment that a source opens with, as Markdown: its indented lines are what one types."""
    lines = []
    for line in source.read_text(encoding="utf-8").splitlines():
        if not line.startswith("//"):
            break
        lines.append(line[3:])
    return "\n".join(lines)


def find_font(pattern):
    family, style = pattern.removeprefix("FONT ").split(":")
    found = subprocess.run(["fc-match", "-f", "%{file}", f"{family}:style={style}"], stdout=subprocess.PIPE, check=True)
    return found.stdout.decode()


def run_example(program, arguments, folder):
    """Runs it in `folder`; the pictures that it drew, by their names."""
    filled = [find_font(argument) if argument.startswith("FONT ") else argument for argument in arguments]
    subprocess.run([program, *filled], cwd=folder, check=True, stdout=subprocess.DEVNULL)
    return [draw_document(argument, folder) if argument.endswith(".pdf") else argument
            for argument in arguments if argument.endswith((".png", ".pdf"))]


def draw_document(name, folder):
    stem = Path(name).stem
    subprocess.run(["pdftocairo", "-png", "-singlefile", "-r", "60", name, stem], cwd=folder, check=True)
    return stem + ".png"


def write_png(file, rows):
    def make_chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    raw = b"".join(b"\0" + b"".join(pixel.to_bytes(3, "big") for pixel in row) for row in rows)
    header = struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, 2, 0, 0, 0)
    file.write_bytes(b"\x89PNG\r\n\x1a\n" + make_chunk(b"IHDR", header) + make_chunk(b"IDAT", zlib.compress(raw)) +
                     make_chunk(b"IEND", b""))


def load_window_module():
    spec = importlib.util.spec_from_file_location("windows", ROOT / "tests/examples/windows.py")
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


def photograph_window(name, program, folder):
    """What the window shows on a screen of its own, with a part of the text selected."""
    windows = load_window_module()
    with windows.Screen() as screen:
        process = subprocess.Popen([program, WINDOWS[name]], env=screen.environment)
        try:
            window = windows.Window(screen, name)
            _, first = window.wait_for("the window", lambda *_: True)
            window.press("Home", *["shift+ctrl+Right"] * 3)
            _, picture = window.wait_for("a selection", lambda _, seen: seen.text != first.text and
                                         seen.count_bands(windows.SELECTION) > 0)
        finally:
            process.terminate()
            process.wait(timeout=windows.PATIENCE)
    write_png(folder / f"{name}.png", picture.text + picture.figures)
    return [f"{name}.png"]


def draw_pictures(name, programs, folder):
    program = programs / name
    if not program.exists():
        return []
    if name in ARGUMENTS:
        return run_example(program, ARGUMENTS[name], folder)
    return photograph_window(name, program, folder) if all(map(shutil.which, WINDOW_TOOLS)) else []


def write_page(name, programs, folder):
    sources = list_sources(name)
    lines = [f"# {name} {{#example-{name}}}", read_description(sources[0])]
    # On a ground that shows white as well as black.
    lines += [f'<div class="drawn">\n![]({picture})\n</div>' for picture in draw_pictures(name, programs, folder)]
    for source in sources:
        lines += [f"## {source.name} {{#example-{name}-{source.stem}{source.suffix[1:]}}}",
                  f"```cpp\n{source.read_text(encoding='utf-8')}```"]
    (folder / f"example-{name}.md").write_text("\n\n".join(lines) + "\n", encoding="utf-8")


def main():
    programs, folder = Path(sys.argv[1]).resolve(), Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    for name in [*ARGUMENTS, *WINDOWS]:
        write_page(name, programs, folder)


if __name__ == "__main__":
    main()
