#!/usr/bin/env python3
"""Checks that includes point down the layers and that every public header is installed.

    check-includes.py ROOT

The layers are, from the bottom: cinder, Utils, Gfx, FontLoaders, FontEngine, TextLayout, CairoAdapter, the
applications and examples, and the tests. A file may include headers of its own layer and of the layers below,
but CairoAdapter none of TextLayout. A header in a folder
`Private` is private to its library unless the library's CMakeLists.txt lists it among its HEADERS. All other headers
are public: they must be listed, their library's umbrella header must include them, and they may include only public
headers. Tests may include everything.
"""
import sys
from pathlib import Path

from house import APPLICATIONS, LAYERS, LISTING_LIBRARY, STRANGERS, House, get_layer


def check_arrows(house):
    for path, layer in house.list_sources():
        in_src = path.relative_to(house.src).as_posix() if layer != APPLICATIONS else None
        for header in house.list_includes(path):
            where = f"{path.relative_to(house.root).as_posix()} includes {header}"
            if get_layer(header) > layer:
                yield f"{where}: it belongs to a higher layer"
            elif in_src and {LAYERS[layer], header.split("/")[0]} == set(STRANGERS):
                yield f"{where}: these two libraries must not know each other"
            elif not house.is_public(header) and get_layer(header) != layer:
                yield f"{where}: private to another library"
            elif in_src in house.listed and header not in house.listed:
                yield f"{where}: an installed header includes one that is not installed"


def check_listed(house):
    for path, layer in house.list_sources():
        if path.suffix != ".h" or layer == APPLICATIONS:
            continue
        header = path.relative_to(house.src).as_posix()
        if house.is_public(header) and header not in house.listed:
            library = LISTING_LIBRARY.get(LAYERS[layer], LAYERS[layer])
            yield f"src/{header} is public, but src/{library}/CMakeLists.txt does not list it"


def check_umbrellas(house):
    for header in sorted(house.listed):
        layer = header.split("/")[0]
        library = LISTING_LIBRARY.get(layer, layer)
        umbrella = f"{library}/{library}.h"
        if header == umbrella or "Private" in Path(header).parts:
            continue
        if header not in set(house.list_includes(house.src / umbrella)):
            yield f"src/{umbrella} leaves out {header}"


def main():
    house = House(Path(sys.argv[1]).resolve())
    problems = [*check_arrows(house), *check_listed(house), *check_umbrellas(house)]
    print(*problems, sep="\n", end="\n" if problems else "")
    sources = len(list(house.list_sources()))
    print(f"{sources} files, {len(house.listed)} installed headers, {len(problems)} problems")
    return 1 if problems or not sources else 0


if __name__ == "__main__":
    sys.exit(main())
