#!/usr/bin/env python3
"""Times whole programs, in turn, that draw one line of text into a PNG file.

Adds the times to a JSON file that the benchmark library wrote.
"""

import argparse
import json
import re
import shutil
import subprocess
import tempfile
import time

GROUP = "whole process/one line"
LINE = "The harbour woke before the town did: first the gulls, then the winches, then the men who"
FAMILY = "DejaVu Sans"
PIXELS = "14"


def list_contestants(engine, folder):
    """{contestant: command}"""
    return {
        "engine": [engine, "render", LINE, "--family", FAMILY, "--size", PIXELS, "-o", f"{folder}/engine.png"],
        "pango-view": ["pango-view", "-q", "--pixels", "--font", f"{FAMILY} {PIXELS}", "--text", LINE,
                       "-o", f"{folder}/pango.png"],
    }


def is_wanted(name, pattern):
    """Applies a filter as the benchmark library does: after a leading dash, it selects what does not match."""
    if pattern.startswith("-"):
        return not re.search(pattern[1:], name)
    return bool(re.search(pattern, name))


def measure(command):
    """Returns the run time in nanoseconds."""
    begin = time.perf_counter_ns()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return time.perf_counter_ns() - begin


def make_run(contestant, **outcome):
    return {"run_name": f"{GROUP}/{contestant}", "run_type": "iteration", **outcome}


def try_once(contestant, command):
    """Returns a failed run, or None on success. Also fills the system's file cache."""
    if shutil.which(command[0]) is None:
        return make_run(contestant, error_occurred=True, error_message="not installed")
    try:
        measure(command)
    except (OSError, subprocess.CalledProcessError) as error:
        return make_run(contestant, error_occurred=True, error_message=str(error))
    return None


def measure_all(contestants, repetitions):
    """Runs all contestants in turn. The first one changes each time."""
    failures = {name: try_once(name, command) for name, command in contestants.items()}
    able = [name for name, failure in failures.items() if failure is None]
    runs = [failure for failure in failures.values() if failure is not None]
    for repetition in range(repetitions):
        for name in able if repetition % 2 else reversed(able):
            runs.append(make_run(name, items_per_second=1e9 / measure(contestants[name])))
    return runs


def add_to(path, runs):
    with open(path, encoding="utf-8") as file:
        text = file.read()
    outcome = json.loads(text) if text else {"benchmarks": []}  # the file is empty if the filter matches nothing
    outcome["benchmarks"] += runs
    with open(path, "w", encoding="utf-8") as file:
        json.dump(outcome, file, indent=2)


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("engine", help="the program fontengine")
    parser.add_argument("into", help="the output of a benchmark process")
    parser.add_argument("--repetitions", type=int, default=41)
    parser.add_argument("--filter", default=".", help="measures only what matches")
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    with tempfile.TemporaryDirectory() as folder:
        contestants = {name: command for name, command in list_contestants(arguments.engine, folder).items()
                       if is_wanted(f"{GROUP}/{name}", arguments.filter)}
        add_to(arguments.into, measure_all(contestants, arguments.repetitions))


if __name__ == "__main__":
    main()
