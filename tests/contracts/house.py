"""The layers of the repository from the bottom up, and the includes between them."""
import re
from pathlib import Path

LAYERS = ["cinder", "Utils", "Gfx", "FontLoaders", "FontEngine", "TextLayout", "CairoAdapter"]
# These two stand side by side; in the list, one must come first.
STRANGERS = ("CairoAdapter", "TextLayout")
APPLICATIONS = len(LAYERS)
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)
# cinder has no library of its own; this library lists its headers.
LISTING_LIBRARY = {"cinder": "Utils"}


class House:
    def __init__(self, root):
        self.root = root
        self.src = root / "src"
        self.listed = {header for layer in LAYERS for header in self._read_listed(layer)}

    def _read_listed(self, layer):
        """Returns the headers that the library's CMakeLists.txt installs, by the paths that clients include them by."""
        lists = self.src / layer / "CMakeLists.txt"
        if not lists.exists():
            return []
        section = re.search(r"\bHEADERS\b([^)]*)\)", lists.read_text(encoding="utf-8"))
        names = section.group(1).split() if section else []
        return [(lists.parent / name).resolve().relative_to(self.src.resolve()).as_posix() for name in names]

    def is_public(self, header):
        return header in self.listed or "Private" not in Path(header).parts

    def list_sources(self):
        """Yields (path, layer number) of every file that the rules apply to."""
        for folder, layer in [("src", None), ("apps", APPLICATIONS), ("examples", APPLICATIONS)]:
            for path in sorted((self.root / folder).rglob("*")):
                if path.suffix in (".h", ".cpp"):
                    yield path, LAYERS.index(path.relative_to(self.src).parts[0]) if layer is None else layer

    def list_includes(self, path):
        """Yields the repository's headers that a file includes, by their paths from src."""
        for name in INCLUDE.findall(path.read_text(encoding="utf-8")):
            beside = (path.parent / name).resolve()
            if beside.exists() and beside.is_relative_to(self.src.resolve()):
                yield beside.relative_to(self.src.resolve()).as_posix()
            elif name.split("/")[0] in LAYERS:
                yield name


def get_layer(header):
    return LAYERS.index(header.split("/")[0])


def find_neighbours(included):
    """{floor: the floors that it includes, without those that stand below another one of them}.

    `included` says for each floor which ones it includes directly. An arrow that follows from others is left out, as in
    every picture of an order; the order must be without circles.
    """
    def list_below(floor):
        return {below for direct in included.get(floor, []) for below in {direct, *list_below(direct)}}

    return {floor: [other for other in others
                    if not any(other in list_below(between) for between in others if between != other)]
            for floor, others in included.items()}
