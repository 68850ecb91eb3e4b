"""The outcome of a run: what each contestant of each group took for an item."""

import json
import re
import statistics
from dataclasses import dataclass, field

NOT_INSTALLED = "not installed"

# The order of the report, whatever the order of the run was; other tasks follow.
TASKS = ("layout", "fallback", "threads", "growth", "draw", "draw at ratio 2", "vector replay", "vector fill",
         "cold glyph", "cold glyph, two sizes in turn", "byte budget", "colour", "open", "scan", "cache hit")

# What an item is, by the first part of a group's name; otherwise a glyph.
ITEMS = {"open": "face", "scan": "face", "colour": "pixel", "cache hit": "hit"}


@dataclass
class Figure:
    """The median over the repetitions in nanoseconds an item, or what went wrong."""

    nanoseconds: float | None = None
    error: str | None = None


@dataclass
class Results:
    context: dict = field(default_factory=dict)
    groups: dict = field(default_factory=dict)  # {"task/workload": {contestant: Figure}}
    memory: list = field(default_factory=list)  # [{"name", "value", "unit"}]

    def get(self, group, contestant):
        """Nanoseconds, None where there is no figure."""
        figure = self.groups.get(group, {}).get(contestant)
        return figure.nanoseconds if figure else None

    def get_memory(self, name):
        return next((entry["value"] for entry in self.memory if entry["name"] == name), None)

    def list_errors(self):
        """What failed, except where a library is not installed."""
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
    """("task/workload", contestant) without what the benchmark library adds to a name."""
    plain = re.sub(r"/(real_time|process_time|manual_time|(repeats|iterations|threads|min_time):[^/]*)(?=/|$)", "",
                   run_name)
    return tuple(plain.rsplit("/", 1))


def sort_contestants(names):
    """The engine first, then the floors, then the peers."""
    return sorted(names, key=lambda name: (not name.startswith("engine"), not name.startswith("floor"), name))


def collect(benchmarks):
    """{group: {contestant: Figure}}: tasks in the order of the report, their groups as they were registered."""
    times = {}
    registered = {}
    errors = {}
    for run in benchmarks:
        if run["run_type"] != "iteration":
            continue
        name = split_name(run["run_name"])
        times.setdefault(name, [])
        index = run.get("family_index", 0)
        registered[name[0]] = min(index, registered.get(name[0], index))
        if run.get("error_occurred"):
            errors[name] = run.get("error_message", "unknown error")
        else:
            times[name].append(1e9 / run["items_per_second"])
    groups = {}
    for (group, contestant), values in times.items():
        error = errors.get((group, contestant))
        figure = Figure(error=error) if error else Figure(statistics.median(values))
        groups.setdefault(group, {})[contestant] = figure
    order = sorted(groups, key=lambda group: (rank_task(get_task(group)), registered[group]))
    return {group: groups[group] for group in order}


def read(results_path, memory_path=None):
    with open(results_path, encoding="utf-8") as file:
        outcome = json.load(file)
    memory = []
    if memory_path:
        with open(memory_path, encoding="utf-8") as file:
            memory = json.load(file)["memory"]
    return Results(outcome["context"], collect(outcome["benchmarks"]), memory)
