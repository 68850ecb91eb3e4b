#!/usr/bin/env python3
"""Prints a page of the documentation as Doxygen wants it: scripts/build-docs passes every page through it.

    filter-page.py PAGE.md

Doxygen knows headings and pages by labels only, not by file name and title. So each heading gets a label, and each link
becomes a reference to one. An example is a page of its own below the page that links to its source; draw-examples.py
has written that page with its labels.
"""
import re
import sys
from pathlib import Path

MAIN_PAGE = "README"
FENCE = re.compile(r"(^```.*?^```$)", re.MULTILINE | re.DOTALL)
HEADING = re.compile(r"^(#+) +(.*)$", re.MULTILINE)
LINK = re.compile(r"(!?)\[([^\]]*)\]\(([^)\s]+)\)")
EXAMPLE = re.compile(r"(?:\.\./)?examples/([\w-]+)")


def make_slug(title):
    return re.sub(r"[^\w\- ]", "", title.lower()).replace(" ", "-")


def get_label(page, slug=""):
    label = "index" if page == MAIN_PAGE else "page-" + page.lower()
    return f"{label}-{slug}" if slug else label


def label_heading(page, heading):
    marks, title = heading.groups()
    if len(marks) > 1:
        return f"{heading[0]} {{#{get_label(page, make_slug(title))}}}"
    return heading[0] if page == MAIN_PAGE else f"{heading[0]} {{#{get_label(page)}}}"


def replace_link(page, link):
    mark, text, target = link.groups()
    if re.match(r"\w+:", target):
        return link[0]
    if mark:
        return f"![{text}]({Path(target).name})"
    if example := EXAMPLE.match(target):
        return f'@subpage example-{example[1]} "{text}"'
    path, _, slug = target.partition("#")
    return f"[{text}](@ref {get_label(Path(path).stem if path else page, slug)})"


def filter_page(page, text):
    if page.startswith("example-"):
        return text
    parts = FENCE.split(text)
    for i in range(0, len(parts), 2):  # every second part is a block of code
        parts[i] = HEADING.sub(lambda heading: label_heading(page, heading), parts[i])
        parts[i] = LINK.sub(lambda link: replace_link(page, link), parts[i])
    return "".join(parts)


if __name__ == "__main__":
    file = Path(sys.argv[1])
    sys.stdout.write(filter_page(file.stem, file.read_text(encoding="utf-8")))
