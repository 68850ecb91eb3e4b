#!/usr/bin/env python3
"""Reports a run of the benchmarks: the time that each contestant takes per item, and which targets are met.

Fails if a benchmark reports an error. A library that is not installed is not an error.
"""

import argparse
import sys

from reporting import plot, results, tables, targets


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("processes", nargs="+", metavar="FILE",
                        help="the JSON output of a benchmark process")
    parser.add_argument("--memory", metavar="FILE", help="the output of fontengine_memory")
    parser.add_argument("--markdown", action="store_true", help="prints tables for a document")
    parser.add_argument("--into", metavar="FILE", help="replaces the figures in this document")
    parser.add_argument("--plot", metavar="FILE", help="also writes a plot as SVG")
    return parser.parse_args()


def replace_figures(document, figures):
    with open(document, encoding="utf-8") as file:
        text = tables.replace_figures(file.read(), figures)
    with open(document, "w", encoding="utf-8") as file:
        file.write(text)


def main():
    arguments = parse_arguments()
    outcome = results.read(arguments.processes, arguments.memory)
    make = tables.make_markdown if arguments.markdown else tables.make_text
    verdicts = targets.judge(outcome)
    print(make(outcome, verdicts))
    if arguments.into:
        replace_figures(arguments.into, tables.make_markdown(outcome, verdicts))
    if arguments.plot:
        with open(arguments.plot, "w", encoding="utf-8") as file:
            file.write(plot.make_svg(outcome, tables.describe_machine(outcome.context)))
    errors = outcome.list_errors()
    for error in errors:
        print(f"report.py: {error}", file=sys.stderr)
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
