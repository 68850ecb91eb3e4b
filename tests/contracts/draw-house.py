#!/usr/bin/env python3
"""Draws the layers for docs/architecture.md from the includes in the sources.

    draw-house.py ROOT             fails unless docs/house.svg matches the includes
    draw-house.py --update ROOT    redraws docs/house.svg

Each layer is a floor of a house; the top floor has the folders of programs. An arrow leads from each floor to its
neighbours: the floors that it includes, except those that it also reaches through another floor. check-includes.py
verifies that no include points up.
"""
import sys
from pathlib import Path

from house import LAYERS, House, find_neighbours, get_layer

PROGRAMS = ["apps", "examples", "tests", "benchmarks", "fuzz"]
ROOMS = {"FontEngine": ["factory, faces", "Renderer", "Private"]}
WORDS = {
    "CairoAdapter": "painters over cairo surfaces",
    "TextLayout": "shaping, directions, fallback, paragraphs",
    "FontLoaders": "where font files come from, opening them with FreeType",
    "Gfx": "descriptions, metrics, character maps, painters, paths",
    "Utils": "checked pointers, assertions, hashes, UTF-8, the MRU cache",
    "cinder": "points, colours, transforms",
}
LEFT, TOP, WIDTH, HEIGHT, GAP = 10, 10, 520, 56, 28
MIDDLE = LEFT + WIDTH // 2
LANE = 24

STYLE = """  <style>
    text { font-family: "DejaVu Sans", Verdana, sans-serif; fill: #1b2b45 }
    .floor { fill: #f4f7fb; stroke: #3b5b8c; stroke-width: 1.5 }
    .room { fill: #ffffff; stroke: #8aa0c0 }
    .program { fill: #eaf5ea; stroke: #3c7a3c; stroke-width: 1.5 }
    .name { font-size: 15px; font-weight: bold }
    .words { font-size: 12px; fill: #33415c }
    .line { stroke: #3b5b8c; stroke-width: 1.5; fill: none }
    .arrow { marker-end: url(#head) }
  </style>
  <defs>
    <marker id="head" viewBox="0 0 10 10" refX="9" refY="5" markerWidth="7" markerHeight="7" orient="auto">
      <path d="M0 0 L10 5 L0 10 z" fill="#3b5b8c"/>
    </marker>
  </defs>"""


def list_files(folder):
    return [path for path in sorted(folder.rglob("*")) if path.suffix in (".h", ".cpp")]


def read_floors(root):
    """Yields (name, floors that it includes, rooms) from the top; the name of the programs' floor is None."""
    house = House(root)
    folders = [root / name for name in PROGRAMS if (root / name).is_dir()]

    def find_included(files, own):
        found = {header.split("/")[0] for path in files for header in house.list_includes(path)}
        return sorted(found - {own}, key=LAYERS.index, reverse=True)

    # bad-house is planted with errors for check-includes.py.
    programs = [path for folder in folders for path in list_files(folder) if "bad-house" not in path.parts]
    yield None, find_included(programs, None), [folder.name for folder in folders]
    for name in reversed(LAYERS):
        yield name, find_included(list_files(root / "src" / name), name), ROOMS.get(name, [])


def draw_boxes(kind, names, left, width, top, height):
    step = width / len(names)
    for i, name in enumerate(names):
        x = left + i * step
        yield f'  <rect class="{kind}" x="{x:g}" y="{top:g}" width="{step - 8:g}" height="{height:g}" rx="5"/>'
        yield (f'  <text class="words" x="{x + (step - 8) / 2:g}" y="{top + height / 2 + 4:g}" '
               f'text-anchor="middle">{name}</text>')


def draw_floor(name, rooms, top):
    if name is None:
        yield from draw_boxes("program", rooms, LEFT, WIDTH + 8, top, HEIGHT)
        return
    yield f'  <rect class="floor" x="{LEFT}" y="{top}" width="{WIDTH}" height="{HEIGHT}" rx="6"/>'
    yield f'  <text class="name" x="{LEFT + 14}" y="{top + 33}">{name}</text>'
    if rooms:
        yield from draw_boxes("room", rooms, LEFT + 130, WIDTH - 130, top + 10, HEIGHT - 20)
    else:
        yield f'  <text class="words" x="{LEFT + 140}" y="{top + 33}">{WORDS[name]}</text>'


def draw_arrows(floor, neighbours, tops):
    """Draws the arrows of the `floor`-th floor from the top: straight down, or in a lane past the floors between."""
    bottom = tops[floor] + HEIGHT
    for name in neighbours:
        below = len(tops) - 1 - get_layer(name)
        if below == floor + 1:
            yield f'  <path class="line arrow" d="M{MIDDLE} {bottom} V{tops[below] - 2}"/>'
        else:
            edge = LEFT + WIDTH
            x, y = edge + (floor + 1) * LANE, tops[below] + 8 + floor * 7
            yield f'  <path class="line arrow" d="M{edge} {bottom - 12} H{x} V{y} H{edge + 2}"/>'


def draw(root):
    floors = list(read_floors(root))
    neighbours = find_neighbours({name: included for name, included, _ in floors})
    tops = [TOP + i * (HEIGHT + GAP) for i in range(len(floors))]
    arrows = [arrow for i, (name, _, _) in enumerate(floors) for arrow in draw_arrows(i, neighbours[name], tops)]
    has_lanes = any(" H" in arrow for arrow in arrows)
    width = LEFT + WIDTH + (len(floors) * LANE if has_lanes else LEFT)
    height = tops[-1] + HEIGHT + TOP
    lines = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" '
             f'width="{width}" height="{height}" role="img">', "  <title>Which library stands on which</title>", STYLE,
             f'  <rect width="{width}" height="{height}" fill="#ffffff"/>']
    for (name, _, rooms), top in zip(floors, tops):
        lines += draw_floor(name, rooms, top)
    return "\n".join([*lines, *arrows, "</svg>", ""])


def main():
    root = Path(sys.argv[-1]).resolve()
    file = root / "docs/house.svg"
    picture = draw(root)
    if "--update" in sys.argv:
        file.write_text(picture, encoding="utf-8")
    elif not file.exists() or file.read_text(encoding="utf-8") != picture:
        print(f"{file} does not match the includes; `draw-house.py --update ROOT` redraws it")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
