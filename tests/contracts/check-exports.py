#!/usr/bin/env python3
"""Compares what a shared library exports with a list that is kept with the sources.

    check-exports.py LIBRARY LIST            fails on every difference
    FONTENGINE_UPDATE_EXPORTS=1 ctest ...    rewrites the lists, for review

The list holds the demangled symbols that only this library defines, sorted: the strong symbols, and the vtables and
type information that clients need to catch and cast (weak symbols, but a key function ties each to one library). Other
weak symbols (inline functions, templates, implicit members) depend on the compiler and its optimisation, and clients
have their own copies, so the list leaves them out. The check still verifies that each of them belongs to this project.
"""
import difflib
import os
import re
import subprocess
import sys

STRONG = "TDBR"
OURS = re.compile(r"(vtable for |typeinfo for |typeinfo name for |non-virtual thunk to )?Vell::")
CLASS_DATA = re.compile(r"(vtable|typeinfo|typeinfo name) for [^<]+$")
KNOWN = STRONG + "WVu"


def list_exports(library):
    """Returns (kind, demangled name) of each defined dynamic symbol."""
    output = subprocess.run(["nm", "--dynamic", "--demangle", "--defined-only", library], check=True,
                            stdout=subprocess.PIPE, text=True).stdout
    return [tuple(line.split(" ", 2)[1:]) for line in output.splitlines()]


def find_strangers(exports):
    return [f"{kind} {name}" for kind, name in exports if kind not in KNOWN or not OURS.match(name)]


def list_own(exports):
    return sorted({name for kind, name in exports if kind in STRONG or CLASS_DATA.match(name)})


def compare(path, names):
    with open(path, encoding="utf-8") as file:
        recorded = file.read().splitlines()
    return list(difflib.unified_diff(recorded, names, "recorded", "exported", lineterm="", n=0))


def main():
    library, path = sys.argv[1:]
    exports = list_exports(library)
    strangers = find_strangers(exports)
    if strangers:
        print(f"{library} exports symbols that do not belong to this project:", *strangers, sep="\n")
        return 1
    names = list_own(exports)
    if os.environ.get("FONTENGINE_UPDATE_EXPORTS"):
        with open(path, "w", encoding="utf-8") as file:
            file.write("\n".join(names) + "\n")
        return 0
    difference = compare(path, names)
    if difference:
        print(*difference, f"{len(names)} symbols; to accept them: FONTENGINE_UPDATE_EXPORTS=1", sep="\n")
    return 1 if difference or not names else 0


if __name__ == "__main__":
    sys.exit(main())
