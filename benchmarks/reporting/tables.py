"""The tables, for a terminal and for a document."""

from reporting.results import TOLERATED_VARIATION, combine, get_item, get_task, get_workload, sort_contestants

FIGURES_BEGIN = "<!-- figures -->"
FIGURES_END = "<!-- end of figures -->"
LIBRARIES = ("FreeType", "Boost", "cairo", "Pango", "SDL_ttf", "Qt")


def describe_machine(context):
    libraries = ", ".join(f"{name} {context[name]}" for name in LIBRARIES if name in context)
    return (f"{context.get('processor', 'unknown processor')}, {context.get('num_cpus', '?')} cores; "
            f"{context.get('compiler', 'unknown compiler')}; {libraries}; {context.get('date', '')[:10]}")


def show_time(figure):
    if figure is None:
        return ""
    if figure.error:
        return figure.error
    return f"{figure.nanoseconds:,.0f}" if figure.nanoseconds >= 1000 else f"{figure.nanoseconds:.1f}"


def show_ratio(engine, figure):
    """The engine's time as a multiple of another contestant's time."""
    ratio = None if figure is engine else combine(lambda own, other: own / other, engine, figure)
    return "" if ratio is None else f"{ratio:.2f}"


def show_variation(figure):
    """How much the times vary, if that is too much."""
    return f"{100 * figure.variation:.0f} %" if figure.is_noisy else ""


def show_cell(figure):
    """The time, and how much it varies, if that is too much."""
    return show_time(figure) + (f" ±{show_variation(figure)}" if figure and figure.is_noisy else "")


def show_value(value, unit):
    return "" if value is None else f"{value:.2f} {unit}"


def show_limit(verdict):
    return f"{'<=' if verdict.is_upper else '>='} {verdict.limit:g} {verdict.unit}"


def list_rows(results):
    """[group, contestant, time, ratio, variation] of all rows."""
    rows = []
    for group, contestants in results.groups.items():
        engine = contestants.get("engine")
        for name in sort_contestants(contestants):
            figure = contestants[name]
            rows.append([group, name, show_time(figure), show_ratio(engine, figure), show_variation(figure)])
    return rows


def list_verdicts(verdicts):
    return [[verdict.target, verdict.case, show_value(verdict.value, verdict.unit), show_limit(verdict),
             verdict.describe()] for verdict in verdicts]


def list_memory(results):
    return [[entry["name"], show_value(entry["value"], entry["unit"])] for entry in results.memory]


def describe_noise(results, verdicts):
    """Lines that name the rows that vary too much. The last line says whether a target depends on any of them."""
    noisy = results.list_noisy()
    if not noisy:
        return []
    limit = f"{100 * TOLERATED_VARIATION:.0f} %"
    names = "; ".join("/".join(row) for row in noisy)
    lines = ["", f"Varied by more than {limit}: {names}."]
    judged = {row for verdict in verdicts for row in verdict.rows}.intersection(noisy)
    if judged:
        lines += ["", f"Targets rest on {len(judged)} of these rows: repeat the run."]
    return lines


def align(header, rows, right):
    """Lines of text. `right` holds the indices of the right-aligned columns."""
    widths = [max(len(row[i]) for row in [header, *rows]) for i in range(len(header))]

    def format_row(row):
        cells = [cell.rjust(width) if i in right else cell.ljust(width)
                 for i, (cell, width) in enumerate(zip(row, widths))]
        return "  ".join(cells).rstrip()

    return [format_row(header), "  ".join("-" * width for width in widths), *map(format_row, rows)]


def draw_markdown(header, rows, right):
    rule = ["---:" if i in right else "---" for i in range(len(header))]
    return ["| " + " | ".join(row) + " |" for row in [header, rule, *rows]]


def make_text(results, verdicts):
    lines = [describe_machine(results.context), ""]
    lines += align(["group", "contestant", "ns an item", "engine / this", "varied by"], list_rows(results),
                   {2, 3, 4})
    if results.memory:
        lines += ["", *align(["memory", "figure"], list_memory(results), {1})]
    lines += ["", *align(["target", "case", "figure", "limit", "verdict"], list_verdicts(verdicts), {2})]
    lines += describe_noise(results, verdicts)
    return "\n".join(lines)


def list_tasks(results):
    """{task: [group]}"""
    tasks = {}
    for group in results.groups:
        tasks.setdefault(get_task(group), []).append(group)
    return tasks


def make_task(results, groups):
    """Makes the table of one task: a row for each contestant, a column for each workload."""
    contestants = sort_contestants({name for group in groups for name in results.groups[group]})
    header = [f"ns a {get_item(groups[0])}", *map(get_workload, groups)]
    rows = [[name, *(show_cell(results.groups[group].get(name)) for group in groups)] for name in contestants]
    return draw_markdown(header, rows, set(range(1, len(header))))


def make_markdown(results, verdicts):
    """Makes the figures of a document. Cells show how much they vary if that is too much."""
    lines = [describe_machine(results.context)]
    for task, groups in list_tasks(results).items():
        lines += ["", f"### {task[0].upper()}{task[1:]}", "", *make_task(results, groups)]
    if results.memory:
        lines += ["", "### Memory", "", *draw_markdown(["what", "figure"], list_memory(results), {1})]
    lines += ["", "### Targets", "",
              *draw_markdown(["target", "case", "figure", "limit", "verdict"], list_verdicts(verdicts), {2})]
    return "\n".join(lines)


def replace_figures(text, figures):
    """Puts the figures between the two marks of the document, which must exist."""
    before, begin, rest = text.partition(FIGURES_BEGIN)
    _, end, after = rest.partition(FIGURES_END)
    if not begin or not end:
        raise ValueError(f"the document lacks {FIGURES_BEGIN} or {FIGURES_END}")
    return f"{before}{begin}\n\n{figures}\n\n{end}{after}"
