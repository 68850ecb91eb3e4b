#!/usr/bin/env python3
"""Prints the medians of a benchmark run: nanoseconds an item, and the engine's time as a multiple of each other's."""

import json
import sys


def read_medians(path):
    """{group: {contestant: nanoseconds an item}}"""
    with open(path, encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    groups = {}
    for run in runs:
        if run.get("aggregate_name") == "median":
            group, contestant = run["run_name"].rsplit("/", 1)
            groups.setdefault(group, {})[contestant] = 1e9 / run["items_per_second"]
    return groups


def main():
    for group, contestants in sorted(read_medians(sys.argv[1]).items()):
        engine = contestants.get("engine")
        print(group)
        for contestant, nanoseconds in sorted(contestants.items(), key=lambda entry: (entry[0] != "engine", entry[0])):
            ratio = f"   engine: {engine / nanoseconds:5.2f} x" if engine and contestant != "engine" else ""
            print(f"  {contestant:20} {nanoseconds:9.1f} ns{ratio}")


if __name__ == "__main__":
    main()
