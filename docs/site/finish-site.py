#!/usr/bin/env python3
"""Puts in order what Doxygen sorts by name, and takes out the links of its summaries that lead nowhere.

    finish-site.py HTML_FOLDER

In the list of classes the product comes first and what clients seldom name comes last: within each namespace first the
classes that have a description, then those that have none, then the namespace Internal.
"""
import json
import re
import sys
from pathlib import Path

TOP = ["Vell", "cinder", "std"]
LIBRARIES = ["FontEngine", "Gfx", "FontLoaders", "TextLayout", "CairoAdapter"]
LAST = "Internal"
ROW = re.compile(r'<tr id="row_([\d_]+)_"[^>]*>.*?</tr>\n', re.DOTALL)
SUMMARY = re.compile(r'<div class="summary">.*?</div>', re.DOTALL)
SUMMARY_LINK = re.compile(r'<a href="#([\w-]+)">[^<]*</a>(?: (?:&#124;|\|))?\s*')


def rank(name, is_described):
    if name in TOP:
        return TOP.index(name)
    if name in LIBRARIES:
        return LIBRARIES.index(name)
    return len(LIBRARIES) + (2 if name == LAST else 0 if is_described else 1)


def read_row(row):
    name = re.search(r'(?:target="_self"|<b)>([^<]*)</', row[0]).group(1)
    return name, '<td class="desc"></td>' not in row[0]


def order_rows(text):
    """The table's rows, each followed by those inside of it. Returns the names in their new order as well."""
    rows = list(ROW.finditer(text))
    ranks = {row[1]: (rank(*read_row(row)), read_row(row)[0].lower()) for row in rows}

    def get_order(row):
        parts = row[1].split("_")
        return [ranks["_".join(parts[:end])] for end in range(1, len(parts) + 1)]

    ordered = sorted(rows, key=get_order)
    table = "".join(re.sub(r' class="even"', "", row[0], count=1) if i % 2 else mark_even(row[0])
                    for i, row in enumerate(ordered))
    described = {read_row(row) for row in rows}
    return text[:rows[0].start()] + table + text[rows[-1].end():], described


def mark_even(row):
    return row if ' class="even"' in row.split(">", 1)[0] else row.replace('">', '" class="even">', 1)


def order_entries(entries, described):
    """The same order for the tree beside the pages."""
    for entry in entries:
        if isinstance(entry[2], list):
            order_entries(entry[2], described)
    entries.sort(key=lambda entry: (rank(entry[0], (entry[0], True) in described), entry[0].lower()))


def order_classes(folder):
    page = folder / "annotated.html"
    text, described = order_rows(page.read_text(encoding="utf-8"))
    page.write_text(text, encoding="utf-8")
    tree = folder / "annotated_dup.js"
    head, entries = tree.read_text(encoding="utf-8").split("=", 1)
    entries = json.loads(entries.strip().rstrip(";"))
    order_entries(entries, described)
    tree.write_text(f"{head}= {json.dumps(entries, indent=1)};\n", encoding="utf-8")


def drop_dead_links(page):
    text = page.read_text(encoding="utf-8")

    def keep(link):
        return link[0] if f'name="{link[1]}"' in text or f'id="{link[1]}"' in text else ""

    finished = SUMMARY.sub(lambda summary: SUMMARY_LINK.sub(keep, summary[0]), text)
    if finished != text:
        page.write_text(finished, encoding="utf-8")


def main():
    folder = Path(sys.argv[1])
    order_classes(folder)
    for page in sorted(folder.glob("*.html")):
        drop_dead_links(page)


if __name__ == "__main__":
    main()
