#!/usr/bin/env python3
"""Draws the road of one string through the sources, for docs/architecture.md.

    draw-road.py ROOT             fails unless docs/string.svg is the picture of the table below, and the table is true
    draw-road.py --update ROOT    draws it anew

A stop is a function: its file must have it, and the file of the stop before must call it. Whoever follows a glyph that
is in the cache opens three files at most, and seven for one that is not.
"""
import re
import sys
from pathlib import Path
from typing import NamedTuple

MOST_WARM_FILES, MOST_COLD_FILES = 3, 7


class Stop(NamedTuple):
    number: int
    function: str
    file: str
    words: tuple
    caller: int  # the number of the stop that calls it; 0 for the client
    is_warm: bool  # on the road of every glyph


RENDERER, PRIVATE = "FontEngine/Renderer", "FontEngine/Private"
STOPS = [
    Stop(1, "drawText", f"{RENDERER}/FE_RasterTextPainter.cpp",
         ("takes the transform apart:", "scale, place and angle"), 0, True),
    Stop(2, "createGlyphRun", f"{RENDERER}/FE_RasterLayout.cpp",
         ("decodes UTF-8, maps characters", "to glyphs, moves the pen"), 1, True),
    Stop(3, "append", f"{PRIVATE}/FE_GlyphService.cpp",
         ("takes one lock for many glyphs;", "finds each in its strike"), 2, True),
    Stop(4, "prepare", f"{PRIVATE}/FE_StrikeCache.h",
         ("makes room for the glyph", "in the strike"), 3, False),
    Stop(5, "FaceSizing", f"{PRIVATE}/FE_FaceSizing.cpp",
         ("sizes the FreeType face, unless", "it has that size already"), 3, False),
    Stop(6, "renderBitmapGlyph", f"{PRIVATE}/FE_GlyphRendering.cpp",
         ("loads, styles and renders", "the glyph"), 3, False),
    Stop(7, "putNew", "Utils/Public/MRUCache.h",
         ("adds the glyph with its weight;", "evicts what is over the budget"), 3, False),
    Stop(8, "drawGlyphRun", f"{RENDERER}/FE_RasterTextPainter.cpp",
         ("snaps positions and hands each", "bitmap to the glyph painter"), 1, True),
]

WIDTH, HEIGHT, GAP, LEFT, TOP = 220, 96, 34, 12, 34
LOWER = TOP + HEIGHT + 92
STYLE = """  <style>
    text { font-family: "DejaVu Sans", Verdana, sans-serif; fill: #33415c; font-size: 12px }
    .warm { fill: #f4f7fb; stroke: #3b5b8c; stroke-width: 1.5 }
    .cold { fill: #fff6e0; stroke: #a8791c; stroke-width: 1.5 }
    .disc { fill: #1b2b45 }
    .number { fill: #ffffff; font-weight: bold; text-anchor: middle }
    .name { fill: #1b2b45; font-size: 14px; font-weight: bold }
    .file { font-family: "DejaVu Sans Mono", monospace; font-size: 11px }
    .arrow { stroke: #3b5b8c; stroke-width: 1.5; fill: none; marker-end: url(#head) }
  </style>
  <defs>
    <marker id="head" viewBox="0 0 10 10" refX="9" refY="5" markerWidth="7" markerHeight="7" orient="auto">
      <path d="M0 0 L10 5 L0 10 z" fill="#3b5b8c"/>
    </marker>
  </defs>"""


def has_name(root, stop, name):
    file = root / "src" / stop.file
    return file.exists() and re.search(rf"\b{name}\b", file.read_text(encoding="utf-8")) is not None


def find_problems(root):
    by_number = {stop.number: stop for stop in STOPS}
    for stop in STOPS:
        if not has_name(root, stop, stop.function):
            yield f"{stop.number}: src/{stop.file} has no {stop.function}"
        if stop.caller and not has_name(root, by_number[stop.caller], stop.function):
            yield f"{stop.number}: {by_number[stop.caller].file} does not call {stop.function}"
    for kind, stops, most in (("cached", [stop for stop in STOPS if stop.is_warm], MOST_WARM_FILES),
                              ("new", STOPS, MOST_COLD_FILES)):
        count = len({stop.file for stop in stops})
        if count > most:
            yield f"following a {kind} glyph takes {count} files, more than {most}"


def place(stops, top):
    return {stop.number: (LEFT + i * (WIDTH + GAP), top) for i, stop in enumerate(stops)}


def draw_stop(stop, x, y):
    kind = "warm" if stop.is_warm else "cold"
    yield f'  <rect class="{kind}" x="{x}" y="{y}" width="{WIDTH}" height="{HEIGHT}" rx="6"/>'
    yield f'  <circle class="disc" cx="{x + 20}" cy="{y + 20}" r="11"/>'
    yield f'  <text class="number" x="{x + 20}" y="{y + 24}">{stop.number}</text>'
    yield f'  <text class="name" x="{x + 40}" y="{y + 25}">{stop.function}</text>'
    yield f'  <text class="file" x="{x + 12}" y="{y + 48}">{Path(stop.file).name}</text>'
    for i, line in enumerate(stop.words):
        yield f'  <text x="{x + 12}" y="{y + 68 + 17 * i}">{line}</text>'


def draw():
    warm, cold = ([stop for stop in STOPS if stop.is_warm == is_warm] for is_warm in (True, False))
    upper, lower = place(warm, TOP), place(cold, LOWER)
    width = LEFT + max(len(warm), len(cold)) * (WIDTH + GAP) - GAP + LEFT
    height = LOWER + HEIGHT + TOP
    yield (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" '
           f'width="{width}" height="{height}" role="img">')
    yield "  <title>The road of one string</title>"
    yield STYLE
    yield f'  <rect width="{width}" height="{height}" fill="#ffffff"/>'
    yield f'  <text x="{LEFT}" y="{TOP - 12}">every glyph</text>'
    yield f'  <text x="{LEFT}" y="{LOWER + HEIGHT + 22}">a glyph that is not in the cache</text>'
    for stops, places in ((warm, upper), (cold, lower)):
        for stop in stops:
            yield from draw_stop(stop, *places[stop.number])
        for stop in stops[:-1]:
            x, y = places[stop.number]
            yield f'  <path class="arrow" d="M{x + WIDTH} {y + HEIGHT // 2} h{GAP - 2}"/>'
    yield from draw_detour(upper[3][0] + WIDTH // 2, lower)


def draw_detour(x, lower):
    """From the third stop to the first of the detour, and back to it from the last one."""
    bottom, middle = TOP + HEIGHT, (TOP + HEIGHT + LOWER) // 2
    first, last = (lower[number][0] + WIDTH // 2 for number in (min(lower), max(lower)))
    yield f'  <path class="arrow" d="M{x - 30} {bottom} V{middle} H{first} V{LOWER - 2}"/>'
    yield f'  <path class="arrow" d="M{last} {LOWER} V{middle} H{x + 30} V{bottom + 2}"/>'
    yield f'  <text x="{first + 8}" y="{middle - 6}">the strike does not know it</text>'
    yield f'  <text x="{last - 8}" y="{middle - 6}" text-anchor="end">the strike remembers it</text>'
    yield "</svg>"


def main():
    root = Path(sys.argv[-1]).resolve()
    file = root / "docs/string.svg"
    problems = list(find_problems(root))
    picture = "\n".join(draw()) + "\n"
    if "--update" in sys.argv:
        file.write_text(picture, encoding="utf-8")
    elif not file.exists() or file.read_text(encoding="utf-8") != picture:
        problems.append(f"{file} is not the picture of the road: draw-road.py --update draws it anew")
    print(*problems, sep="\n", end="\n" if problems else "")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
