#!/usr/bin/env python3
"""Checks that a source compiles and that the compiler rejects each of its misuses.

    check-misuse.py SOURCE COMPILER [FLAG...]

A misuse stands between `#ifdef MISUSE_NAME // TEXT` and `#endif`. TEXT is a regular expression that must match the
compiler's error, because an error for another reason proves nothing. The source must compile without any misuse. Then
the script compiles all misuses at once and looks for each error in the lines of its misuse. It compiles a misuse by
itself if its error is not there, as when the compiler reports it in a header.
"""
import re
import subprocess
import sys

BEGIN = re.compile(r"^#ifdef (MISUSE_\w+) // (.+)$")
ERROR = re.compile(r"^(.+?):(\d+):\d+: (?:fatal )?error: (.*)$")


class Misuse:
    def __init__(self, name, text, line):
        self.name = name
        self.text = text
        self.first = self.last = line

    def is_refused_by(self, error):
        return re.search(self.text, error) is not None

    def is_refused_in_place(self, source, errors):
        return any(file == source and self.first < line < self.last and self.is_refused_by(error)
                   for file, line, error in errors)


def read_misuses(source):
    misuses = []
    with open(source, encoding="utf-8") as file:
        for number, line in enumerate(file, start=1):
            begin = BEGIN.match(line)
            if begin:
                misuses.append(Misuse(*begin.groups(), number))
            elif line.startswith("#endif") and misuses:
                misuses[-1].last = number
    return misuses


class Compiler:
    def __init__(self, command, source):
        self.command = [*command, "-std=c++17", "-fsyntax-only", source]

    def find_errors(self, misuses):
        """Returns (file, line, text) of each error that these misuses cause."""
        definitions = [f"-D{misuse.name}" for misuse in misuses]
        run = subprocess.run([*self.command, *definitions], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                             text=True, check=False)
        found = [ERROR.match(line) for line in run.stdout.splitlines()]
        errors = [(error.group(1), int(error.group(2)), error.group(3)) for error in found if error]
        if (run.returncode == 0) == bool(errors):
            errors.append(("compiler", 0, f"status {run.returncode}: {run.stdout}"))
        return errors


def check_alone(misuse, compiler):
    errors = compiler.find_errors([misuse])
    if not errors:
        return [f"{misuse.name} compiles"]
    if any(misuse.is_refused_by(text) for _, _, text in errors):
        return []
    return [f"{misuse.name} fails for another reason than '{misuse.text}':", *map(str, errors)]


def check(source, compiler):
    """Returns the problems of the source, one line of text each."""
    misuses = read_misuses(source)
    if not misuses:
        return ["contains no misuse"]
    control = compiler.find_errors([])
    if control:
        return ["does not compile even without a misuse:", *map(str, control)]
    together = compiler.find_errors(misuses)
    alone = [misuse for misuse in misuses if not misuse.is_refused_in_place(source, together)]
    print(f"{len(misuses)} misuses, {len(alone)} of them compiled alone")
    return [problem for misuse in alone for problem in check_alone(misuse, compiler)]


def main():
    source, *command = sys.argv[1:]
    problems = check(source, Compiler(command, source))
    for problem in problems:
        print(f"{source}: {problem}", file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
