"""The plot as SVG: a panel for each task and a bar for each contestant, legible on light and dark backgrounds."""

import math
from html import escape

from reporting.results import get_item, get_workload, sort_contestants
from reporting.tables import list_tasks, show_time

COLUMN_WIDTH = 640
MARGIN = 24
LABEL_WIDTH = 214
VALUE_WIDTH = 84
BAR_WIDTH = COLUMN_WIDTH - LABEL_WIDTH - VALUE_WIDTH
ROW_HEIGHT = 15
GROUP_GAP = 8
TITLE_HEIGHT = 30
PANEL_GAP = 26
HEAD_HEIGHT = 64

STYLE = """
  svg { background: #ffffff; }
  .ground { fill: #ffffff; }
  text { font: 11px "DejaVu Sans", sans-serif; fill: #30343b; }
  .title { font-size: 14px; font-weight: bold; }
  .note { fill: #5c636e; }
  .group { font-weight: bold; }
  .axis { stroke: #9aa1ab; stroke-width: 1; }
  .engine { fill: #d1495b; }
  .floor { fill: #9aa1ab; }
  .peer { fill: #3b7dd8; }
  @media (prefers-color-scheme: dark) {
    svg { background: #16181d; }
    .ground { fill: #16181d; }
    text { fill: #e4e6ea; }
    .note { fill: #a7adb8; }
    .axis { stroke: #6d747f; }
    .engine { fill: #f0727f; }
    .floor { fill: #7d8590; }
    .peer { fill: #6ea8fe; }
  }
"""


def choose_class(contestant):
    return next((kind for kind in ("engine", "floor") if contestant.startswith(kind)), "peer")


class Scale:
    """Bar lengths: linear, or logarithmic if the largest time exceeds the smallest more than twentyfold."""

    def __init__(self, times):
        self.is_logarithmic = max(times) > 20 * min(times)
        self.first = 10 ** math.floor(math.log10(min(times)) - 0.3)
        self.last = max(times)

    def place(self, time):
        if self.is_logarithmic:
            return BAR_WIDTH * math.log(time / self.first) / math.log(self.last / self.first)
        return BAR_WIDTH * time / self.last


class Panel:
    def __init__(self, task, groups, results):
        self.task = task
        self.groups = [(group, results.groups[group]) for group in groups]
        times = [figure.nanoseconds for _, contestants in self.groups for figure in contestants.values()
                 if figure.nanoseconds]
        self.scale = Scale(times) if times else None

    @property
    def height(self):
        rows = sum(len(contestants) + 1 for _, contestants in self.groups)
        return TITLE_HEIGHT + rows * ROW_HEIGHT + len(self.groups) * GROUP_GAP

    def draw(self, x, y):
        is_logarithmic = self.scale is not None and self.scale.is_logarithmic
        note = f"ns a {get_item(self.groups[0][0])}" + (", logarithmic" if is_logarithmic else "")
        yield f'<text class="title" x="{x}" y="{y + 14}">{escape(self.task)}</text>'
        yield f'<text class="note" x="{x + LABEL_WIDTH + BAR_WIDTH}" y="{y + 14}" text-anchor="end">{note}</text>'
        y += TITLE_HEIGHT
        for group, contestants in self.groups:
            yield f'<text class="group" x="{x}" y="{y + 11}">{escape(get_workload(group))}</text>'
            y += ROW_HEIGHT
            height = ROW_HEIGHT * len(contestants)
            yield f'<path class="axis" d="M{x + LABEL_WIDTH - 0.5} {y}v{height}"/>'
            for name in sort_contestants(contestants):
                yield from self.draw_bar(x, y, name, contestants[name])
                y += ROW_HEIGHT
            y += GROUP_GAP

    def draw_bar(self, x, y, name, figure):
        start = x + LABEL_WIDTH
        length = self.scale.place(figure.nanoseconds) if figure.nanoseconds else 0.0
        yield f'<text x="{start - 6}" y="{y + 11}" text-anchor="end">{escape(name)}</text>'
        yield (f'<rect class="{choose_class(name)}" x="{start}" y="{y + 2}" width="{max(length, 1):.1f}" '
               f'height="{ROW_HEIGHT - 4}"/>')
        yield f'<text class="note" x="{start + length + 5:.1f}" y="{y + 11}">{escape(show_time(figure))}</text>'


def draw_legend(x, y):
    for kind, text in (("engine", "the engine"), ("floor", "a floor: what cannot be left out"), ("peer", "others")):
        yield f'<rect class="{kind}" x="{x}" y="{y - 10}" width="12" height="12"/>'
        yield f'<text x="{x + 18}" y="{y}">{text}</text>'
        x += 60 + 7 * len(text)


def measure(panels):
    return sum(panel.height + PANEL_GAP for panel in panels)


def split(panels):
    """Splits the panels into two columns, in order, so that the longer column is as short as possible."""
    splits = [(panels[:i], panels[i:]) for i in range(1, len(panels) + 1)]
    return min(splits, key=lambda columns: max(map(measure, columns))) if splits else ()


def draw_column(panels, x):
    y = HEAD_HEIGHT
    for panel in panels:
        yield from panel.draw(x, y)
        y += panel.height + PANEL_GAP


def make_svg(results, heading):
    panels = [Panel(task, groups, results) for task, groups in list_tasks(results).items()]
    columns = split(panels)
    elements = [element for i, column in enumerate(columns)
                for element in draw_column(column, MARGIN + i * (COLUMN_WIDTH + MARGIN))]
    height = HEAD_HEIGHT + max(map(measure, columns), default=0)
    width = MARGIN + 2 * (COLUMN_WIDTH + MARGIN)
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" viewBox="0 0 {width} {height}">',
        f"<style>{STYLE}</style>",
        f'<rect class="ground" width="{width}" height="{height}"/>',
        f'<text class="note" x="{MARGIN}" y="24">{escape(heading)}</text>',
        *draw_legend(MARGIN, 46), *elements, "</svg>", ""])
