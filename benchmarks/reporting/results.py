"""The results of a run: the time that each contestant of each group takes per item.

Other programs on the machine can only make a time longer. Therefore the shortest repetition of each process counts,
contestants are compared within each process, and the median of the processes decides.
"""

import json
import re
import statistics
from dataclasses import dataclass, field

NOT_INSTALLED = "not installed"

# The order of the report, which does not depend on the order of the run. Other tasks follow.
TASKS = ("layout", "fallback", "threads", "growth", "draw", "draw at ratio 2", "vector replay", "vector fill",
         "first shaping", "shaping again", "shaped draw", "shaped draw at ratio 2", "break anew", "cold glyph", "cold glyph, two sizes in turn",
         "byte budget", "instance", "varied layout",
         "varied draw", "varied cold line", "colour", "open", "scan", "cache hit", "whole process")

# What an item is, by the first part of a group's name. Otherwise it is a glyph.
ITEMS = {"break anew": "byte", "instance": "font", "varied cold line": "line", "open": "face", "scan": "face",
         "colour": "pixel", "cache hit": "hit", "whole process": "run"}

# A greater variation shows that other programs used the machine.
TOLERATED_VARIATION = 0.10


@dataclass
class Figure:
    """The shortest repetition of each process in nanoseconds per item, or an error.

    `excess` is how far the median of a process's repetitions lies above the shortest one, in the worst process and
    relative to the shortest.
    """

    minima: tuple = ()
    excess: float = 0.0
    error: str | None = None

    @property
    def nanoseconds(self):
        """The median of the processes, None if there is no figure."""
        return statistics.median(self.minima) if self.minima else None

    @property
    def variation(self):
        """The variation within or between the processes, whichever is greater, relative to the shortest time."""
        return max(self.excess, max(self.minima) / min(self.minima) - 1) if self.minima else 0.0

    @property
    def is_noisy(self):
        return self.variation > TOLERATED_VARIATION


def combine(function, *figures):
    """Applies a function to the times of each process and returns the median. None if a figure is missing."""
    if not all(figure and figure.minima for figure in figures):
        return None
    return statistics.median(function(*times) for times in zip(*(figure.minima for figure in figures)))


@dataclass
class Results:
    context: dict = field(default_factory=dict)
    groups: dict = field(default_factory=dict)  # {"task/workload": {contestant: Figure}}
    memory: list = field(default_factory=list)  # [{"name", "value", "unit"}]

    def find(self, group, contestant):
        """The figure of a row, None if it was not measured."""
        return self.groups.get(group, {}).get(contestant)

    def list_noisy(self):
        """[(group, contestant)] of the rows that vary too much."""
        return [(group, contestant) for group, contestants in self.groups.items()
                for contestant, figure in contestants.items() if figure.is_noisy]

    def get_memory(self, name):
        return next((entry["value"] for entry in self.memory if entry["name"] == name), None)

    def list_errors(self):
        """The errors of the run. A library that is not installed is not an error."""
        return [f"{group}/{contestant}: {figure.error}"
                for group, contestants in self.groups.items() for contestant, figure in contestants.items()
                if figure.error and figure.error != NOT_INSTALLED]


def get_task(group):
    return group.split("/", 1)[0]


def get_workload(group):
    return group.split("/", 1)[1]


def rank_task(task):
    return TASKS.index(task) if task in TASKS else len(TASKS)


def get_item(group):
    return ITEMS.get(get_task(group), "glyph")


def split_name(run_name):
    """("task/workload", contestant) without the suffixes of the benchmark library."""
    plain = re.sub(r"/(real_time|process_time|manual_time|(repeats|iterations|threads|min_time):[^/]*)(?=/|$)", "",
                   run_name)
    return tuple(plain.rsplit("/", 1))


def sort_contestants(names):
    """The engine first, then the floors, then the peers."""
    return sorted(names, key=lambda name: (not name.startswith("engine"), not name.startswith("floor"), name))


class Process:
    """The measurements of one process: the times of each row, or its error."""

    def __init__(self, benchmarks):
        self.times = {}  # {(group, contestant): [nanoseconds an item]}
        self.errors = {}
        for run in benchmarks:
            if run["run_type"] == "iteration":
                self.add(split_name(run["run_name"]), run)

    def add(self, row, run):
        times = self.times.setdefault(row, [])
        if run.get("error_occurred"):
            self.errors[row] = run.get("error_message", "unknown error")
        else:
            times.append(1e9 / run["items_per_second"])


def make_figure(row, processes):
    error = next((process.errors[row] for process in processes if row in process.errors), None)
    if error is None and not all(process.times.get(row) for process in processes):
        error = "missing from a process"
    if error:
        return Figure(error=error)
    times = [process.times[row] for process in processes]
    return Figure(tuple(map(min, times)), max(statistics.median(values) / min(values) - 1 for values in times))


def list_registered(runs):
    """{group: index of its first registration}"""
    registered = {}
    for run in runs:
        group = split_name(run["run_name"])[0]
        index = run.get("family_index", 0)
        registered[group] = min(index, registered.get(group, index))
    return registered


def collect(processes):
    """{group: {contestant: Figure}}: tasks in the order of the report, groups in the order of registration."""
    registered = list_registered(run for runs in processes for run in runs)
    outcomes = [Process(runs) for runs in processes]
    groups = {}
    for row in dict.fromkeys(row for outcome in outcomes for row in outcome.times):
        groups.setdefault(row[0], {})[row[1]] = make_figure(row, outcomes)
    order = sorted(groups, key=lambda group: (rank_task(get_task(group)), registered[group]))
    return {group: groups[group] for group in order}


def load(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def read(process_paths, memory_path=None):
    processes = [load(path) for path in process_paths]
    memory = load(memory_path)["memory"] if memory_path else []
    return Results(processes[0].get("context", {}), collect([process["benchmarks"] for process in processes]), memory)
