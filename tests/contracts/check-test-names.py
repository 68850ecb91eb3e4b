#!/usr/bin/env python3
"""Checks that the name of a test leads to its source and to its program.

    check-test-names.py ROOT

`XTest.cpp`, below `tests` or in `fuzz/tests`, holds the suites `X` and `XSomething`. If two sources match a suite, the
one with the longer name must hold it. No two sources share a name, so each suite has one place. A program of tests is
named after its layer, the folder below `tests`: `<layer>_tests` or `<layer>_<what>_tests`, in snake case.
"""
import re
import sys
from pathlib import Path

SUITE = re.compile(r"^ *(?:TEST|TEST_F|TEST_P|TYPED_TEST|TYPED_TEST_P)\(\s*(\w+)\s*,", re.MULTILINE)
PROGRAM = re.compile(r"^ *fontengine_add_test\(\s*(\w+)", re.MULTILINE)
SHORT_LAYERS = {"font_engine": "engine"}
# This folder holds wrong names, which the check must find.
PLANTED = "bad-names"


def list_files(root, pattern):
    """Returns the files of the tests, including those of the fuzzers."""
    found = [path for folder in ("tests", "fuzz") for path in (root / folder).rglob(pattern)]
    return sorted(path for path in found if PLANTED not in path.relative_to(root).parts)


def read_suites(root):
    """Returns the suites of each source that has any."""
    suites = {path: sorted(set(SUITE.findall(path.read_text(encoding="utf-8")))) for path in list_files(root, "*.cpp")}
    return {path: names for path, names in suites.items() if names}


def get_subject(path):
    """Returns the X of XTest.cpp, or None for a source that is not named so."""
    return path.stem[:-len("Test")] if re.fullmatch(r"[A-Z]\w*Test", path.stem) else None


def find_subject(suite, subjects):
    """Returns the longest X that the suite's name begins with, in whole words, or None."""
    fitting = [subject for subject in subjects if re.match(subject + r"(?![a-z])", suite)]
    return max(fitting, key=len, default=None)


def check_sources(root, suites):
    places = {}
    for path in suites:
        name = path.relative_to(root).as_posix()
        subject = get_subject(path)
        if subject is None:
            yield f"{name} has tests, but is not named XTest.cpp"
        elif subject in places:
            yield f"{name} has the same name as {places[subject]}"
        else:
            places[subject] = name


def check_suites(root, suites):
    subjects = {get_subject(path) for path in suites} - {None}
    for path, names in suites.items():
        for suite in names:
            subject = find_subject(suite, subjects)
            if get_subject(path) is None or subject == get_subject(path):
                continue
            where = f"{path.relative_to(root).as_posix()} has the suite {suite}"
            yield f"{where}, which leads to {subject}Test.cpp" if subject else f"{where}, which leads nowhere"


def get_layer(path, root):
    parts = path.relative_to(root).parts
    folder = parts[1] if parts[0] == "tests" else parts[0]
    layer = re.sub(r"(?<=[a-z])(?=[A-Z])", "_", folder).lower()
    return SHORT_LAYERS.get(layer, layer)


def check_programs(root):
    for path in list_files(root, "CMakeLists.txt"):
        for program in PROGRAM.findall(path.read_text(encoding="utf-8")):
            layer = get_layer(path, root)
            if not re.fullmatch(rf"{layer}(_[a-z0-9]+)*_tests", program):
                yield f"{path.relative_to(root).as_posix()} makes {program}, not {layer}_tests or {layer}_..._tests"


def main():
    root = Path(sys.argv[1]).resolve()
    suites = read_suites(root)
    problems = [*check_sources(root, suites), *check_suites(root, suites), *check_programs(root)]
    print(*problems, sep="\n", end="\n" if problems else "")
    print(f"{len(suites)} sources, {sum(map(len, suites.values()))} suites, {len(problems)} problems")
    return 1 if problems or not suites else 0


if __name__ == "__main__":
    sys.exit(main())
