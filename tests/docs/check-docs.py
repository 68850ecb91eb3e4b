#!/usr/bin/env python3
"""Checks the documents of the repository.

    check-docs.py ROOT                      links lead somewhere; C++ is what the tests compile
    check-docs.py --update ROOT             writes the C++ anew from what the tests compile
    check-docs.py --table PROGRAM [--update] ROOT    the measured table is what PROGRAM prints

Documents are README.md, CHANGELOG.md, CONTRIBUTING.md and docs/*.md. Relative links name a file or folder, and of a
document a heading. Each block of C++ stands below a comment that says where it is from:

    <!-- from tests/docs/GuideTest.cpp [budget] -->

and is the same, but for its indentation, as what stands there between two lines `//! [budget]`. The table stands
below `<!-- measured -->` in docs/guide.md.
"""
import argparse
import re
import subprocess
import sys
import textwrap
from pathlib import Path

SKIPPED = 77  # what the measuring program and CTest say for "cannot be told on this machine"
LINK = re.compile(r"!?\[[^\]]*\]\(([^)\s]+)\)")
FENCE = re.compile(r"^```.*?^```$", re.MULTILINE | re.DOTALL)
CODE = re.compile(r"^(?:<!-- from (?P<path>\S+) \[(?P<region>\w+)\] -->\n)?```cpp\n(?P<code>.*?)^```$",
                  re.MULTILINE | re.DOTALL)
TABLE = re.compile(r"(?<=^<!-- measured -->\n)(?:\|.*\n)*", re.MULTILINE)


def list_documents(root):
    named = [root / name for name in ("README.md", "CHANGELOG.md", "CONTRIBUTING.md")]
    return [path for path in named if path.exists()] + sorted((root / "docs").glob("*.md"))


def list_anchors(document):
    """The names that a heading is linked to by."""
    text = FENCE.sub("", document.read_text(encoding="utf-8"))
    headings = re.findall(r"^#+ +(.*?)(?: *\{#([\w-]+)\})?$", text, re.MULTILINE)
    return {given or re.sub(r"[^\w\- ]", "", title.lower()).replace(" ", "-") for title, given in headings}


def check_links(root, document):
    for target in LINK.findall(FENCE.sub("", document.read_text(encoding="utf-8"))):
        if re.match(r"\w+:", target):
            continue
        path, _, anchor = target.partition("#")
        file = (document.parent / path).resolve() if path else document
        where = f"{document.relative_to(root)} links to {target}"
        if not file.exists():
            yield f"{where}: no such file"
        elif anchor and anchor not in list_anchors(file):
            yield f"{where}: no such heading"


def read_region(root, path, region):
    """The marked lines of a source, moved to the left; None where there are none."""
    file = root / path
    lines = file.read_text(encoding="utf-8").splitlines() if file.exists() else []
    marks = [i for i, line in enumerate(lines) if line.strip() == f"//! [{region}]"]
    if len(marks) != 2:
        return None
    return textwrap.dedent("\n".join(lines[marks[0] + 1:marks[1]])) + "\n"


def check_code(root, document):
    text = document.read_text(encoding="utf-8")
    blocks = list(CODE.finditer(text))
    if text.count("```cpp") != len(blocks) or len(re.findall("^<!-- from ", text, re.MULTILINE)) > len(blocks):
        yield f"{document.relative_to(root)} has a block of C++, or a comment for one, that cannot be read"
    for block in blocks:
        first = block["code"].split("\n", 1)[0]
        where = f"{document.relative_to(root)}, the block '{first}'"
        if block["path"] is None:
            yield f"{where}: does not say where it is from"
            continue
        code = read_region(root, block["path"], block["region"])
        if code is None:
            yield f"{where}: {block['path']} has no [{block['region']}]"
        elif code != block["code"]:
            yield f"{where}: differs from {block['path']} [{block['region']}]"


def update_code(root, document):
    def renew(block):
        code = block["path"] and read_region(root, block["path"], block["region"])
        if not code:
            return block[0]
        start, end = (position - block.start() for position in block.span("code"))
        return block[0][:start] + code + block[0][end:]

    document.write_text(CODE.sub(renew, document.read_text(encoding="utf-8")), encoding="utf-8")


def check_table(guide, measured, update):
    text = guide.read_text(encoding="utf-8")
    written = TABLE.search(text)
    if written is None:
        yield f"{guide.name} has no measured table"
    elif update:
        guide.write_text(text[:written.start()] + measured + text[written.end():], encoding="utf-8")
    elif written[0] != measured:
        yield f"{guide.name} has another table than what is measured:\n{measured}"


def find_problems(options):
    root = options.root.resolve()
    if options.table:
        run = subprocess.run([options.table], stdout=subprocess.PIPE, text=True, check=False)
        if run.returncode == SKIPPED:
            sys.exit(SKIPPED)
        run.check_returncode()
        yield from check_table(root / "docs/guide.md", run.stdout, options.update)
        return
    for document in list_documents(root):
        if options.update:
            update_code(root, document)
        yield from check_links(root, document)
        yield from check_code(root, document)


def main():
    parser = argparse.ArgumentParser(description="Checks the documents of the repository.")
    parser.add_argument("--table", metavar="PROGRAM", help="compare the measured table with what PROGRAM prints")
    parser.add_argument("--update", action="store_true", help="write what can be written instead of complaining")
    parser.add_argument("root", type=Path)
    options = parser.parse_args()
    problems = list(find_problems(options))
    print(*problems, f"{len(problems)} problems", sep="\n")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
