#!/usr/bin/env python3
"""Checks the site that scripts/build-docs made.

    check-site.py FOLDER

Every link in the pages of FOLDER leads to a file there, and to an anchor in it; links to other sites are not followed.
The list of classes has the public classes first. Every example has a picture, but for the one with a window, which not
every machine can show.
"""
import re
import sys
from html import unescape
from pathlib import Path
from urllib.parse import unquote

LINK = re.compile(r'\b(?:href|src)="([^"]*)"')
CLASSES_IN_ORDER = ["FontFactory", "Internal", "CharMap", "FontLoader", "CairoPainter", "std"]
WINDOW_PAGE = "example-live-text.html"
ANCHOR = re.compile(r'\b(?:id|name)="([^"]+)"')


def read_page(file):
    text = re.sub(r"<script.*?</script>", "", file.read_text(encoding="utf-8"), flags=re.DOTALL)
    return {unescape(link) for link in LINK.findall(text)}, {unescape(anchor) for anchor in ANCHOR.findall(text)}


def check_classes(folder):
    page = folder / "annotated.html"
    text = page.read_text(encoding="utf-8") if page.exists() else ""
    places = [text.find(f">{name}</") for name in CLASSES_IN_ORDER]
    if -1 in places or places != sorted(places):
        yield f"annotated.html does not list {', '.join(CLASSES_IN_ORDER)} in this order"


def check_pictures(pages):
    examples = [name for name in pages if name.startswith("example-") and "_8" not in name]  # _8 is the dot of a file
    if not examples:
        yield "no page of an example"
    for name in examples:
        if name != WINDOW_PAGE and not any(link.endswith(".png") and link[:-4] in name for link in pages[name][0]):
            yield f"{name} has no picture of its own"


def check_links(folder, pages):
    for name, (links, _) in pages.items():
        for link in sorted(links):
            if re.match(r"\w+:", link):
                continue
            path, _, anchor = unquote(link).partition("#")
            target = path or name
            if not (folder / target).exists():
                yield f"{name} links to {link}: no such file"
            elif anchor and target in pages and anchor not in pages[target][1]:
                yield f"{name} links to {link}: no such anchor"


def find_problems(folder):
    pages = {file.name: read_page(file) for file in sorted(folder.glob("*.html"))}
    if "index.html" not in pages:
        yield "no index.html"
    yield from check_links(folder, pages)
    yield from check_classes(folder)
    yield from check_pictures(pages)


def main():
    problems = list(find_problems(Path(sys.argv[1])))
    print(*problems, f"{len(problems)} problems", sep="\n")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
