"""The targets of the engine, and whether a run meets them."""

from dataclasses import dataclass

from reporting.results import combine

TEXTS = ("E", "M", "L", "CJK")
FORM = "form"
LATE_TEXTS = ("prose", "code")  # nothing was tuned for them
ALL_TEXTS = (*TEXTS, FORM, *LATE_TEXTS)
SHAPED_TEXTS = ("E", "M", "L", "CJK", "Arabic", "Devanagari", "Thai")
SHARED_KEY = "floor: 64-bit key, locked, shared"
SHOW_TEXT = "cairo show_text"


@dataclass
class Verdict:
    """One target for one case. `value` is None if the run has no figure; `rows` are the rows that it depends on."""

    target: str
    case: str
    value: float | None
    unit: str
    limit: float
    is_upper: bool = True
    rows: tuple = ()
    is_noisy: bool = False

    @property
    def is_met(self):
        if self.value is None:
            return None
        return self.value <= self.limit if self.is_upper else self.value >= self.limit

    def describe(self):
        if self.is_met is None:
            return "no figure"
        return self.describe_share() + (", but noisy" if self.is_noisy else "")

    def describe_share(self):
        if self.is_met:
            return "met"
        share = self.value / self.limit if self.is_upper else self.limit / self.value
        return f"missed by {100 * (share - 1):.0f} %"


def compare(results, target, case, function, rows, unit, limit, is_upper=True):
    """Judges a function of the times of two rows by its median over the processes."""
    figures = [results.find(*row) for row in rows]
    is_noisy = any(figure is not None and figure.is_noisy for figure in figures)
    return Verdict(target, case, combine(function, *figures), unit, limit, is_upper, tuple(rows), is_noisy)


def divide(dividend, divisor):
    return dividend / divisor


def subtract(minuend, subtrahend):
    return minuend - subtrahend


def to_milliseconds(nanoseconds):
    return nanoseconds / 1e6


def at_most_times(results, target, groups, reference, factor):
    """The engine's time as a multiple of another contestant's time."""
    return [compare(results, target, group, divide, [(group, "engine"), (group, reference)], "x", factor)
            for group in groups]


def faster(results, target, groups, peer, factor=1.0):
    """A peer's time as a multiple of the engine's time."""
    return [compare(results, target, group, divide, [(group, peer), (group, "engine")], "x", factor, False)
            for group in groups]


def judge_layout(results):
    groups = [f"layout/{text}" for text in ALL_TEXTS]
    return (at_most_times(results, "warm layout: at most 0.9 x a locked hit of a 64-bit key, shared", groups,
                          SHARED_KEY, 0.9)
            + at_most_times(results, "warm layout: at most 0.25 x Pango", groups, "Pango", 0.25)
            + faster(results, "warm layout: faster than SDL_ttf measures", ["layout/E"], "SDL_ttf"))


def judge_shaping(results):
    first = [f"first shaping/{text}" for text in SHAPED_TEXTS]
    again = [f"shaping again/{text}" for text in SHAPED_TEXTS]
    return (at_most_times(results, "first shaping: at most 1.3 x hb_shape of the same runs", first,
                          "floor: hb_shape", 1.3)
            + faster(results, "first shaping: at least 1.5 x as fast as Pango", first, "Pango", 1.5)
            + at_most_times(results, "shaping again: at most 2 x the layout of unshaped text", again,
                            "engine, unshaped", 2.0)
            + faster(results, "shaping again: at least 4 x as fast as Pango", again, "Pango", 4.0)
            + faster(results, "shaping again: at least 2 x as fast as Qt", again, "Qt", 2.0)
            + faster(results, "warm drawing of shaped text: as fast as cairo show_glyphs",
                     [f"{task}/{text}" for task in ("shaped draw", "shaped draw at ratio 2") for text in ALL_TEXTS],
                     "cairo show_glyphs")
            + faster(results, "breaking a shaped 1 MB text anew: at least 10 x as fast as Pango",
                     [f"break anew/1 MB {text}" for text in ("E", "CJK")], "Pango", 10.0))


def judge_drawing(results):
    texts = [f"draw/{text}" for text in TEXTS]
    dense = [f"draw at ratio 2/{text}" for text in ALL_TEXTS]
    return (faster(results, "warm drawing: at least 1.15 x as fast as cairo show_text", texts, SHOW_TEXT, 1.15)
            + faster(results, "warm drawing, coloured underscores: as fast as cairo show_text", [f"draw/{FORM}"],
                     SHOW_TEXT)
            + faster(results, "warm drawing: as fast as cairo show_text", dense, SHOW_TEXT))


def judge_threads(results):
    rows = [(f"threads/{count}", "engine, shared factory") for count in ("2 threads", "1 thread")]
    return [compare(results, "two threads on one factory: each at most 2 x one alone", "threads", divide, rows, "x",
                    2.0)]


def judge_growth(results):
    rows = [(f"growth/{size}", "engine") for size in ("10 MB", "10 KB")]
    return [compare(results, "growth: a glyph of 10 MB at most 1.3 x one of 10 KB", "growth", divide, rows, "x", 1.3)]


def judge_memory(results):
    return [Verdict(target, name, results.get_memory(name), "bytes", limit) for target, name, limit in (
        ("memory: at most 32 bytes a glyph of a run", "sizeof(BitmapGlyph)", 32.0),
        ("memory: at most 347 bytes a cached glyph", "cached glyph, beyond its pixels", 347.0),
        ("memory: at most 24 bytes a glyph of a shaped text", "glyph of a shaped text", 24.0))]


def judge_vector(results):
    return [compare(results, "warm vector text: at most 35 ns a glyph more than by hand", group, subtract,
                    [(group, "engine"), (group, "floor: by hand")], "ns", 35.0)
            for group in (f"vector replay/{text}" for text in ALL_TEXTS)]


def judge_making(results):
    glyphs = [f"cold glyph/{kind}" for kind in ("bytecode", "auto-hinter", "unhinted")]
    faces = [f"open/{font}" for font in ("DejaVu", "Noto CJK")]
    return (at_most_times(results, "cold glyph: at most 1.10 x FreeType's three calls", glyphs, "floor: FreeType", 1.10)
            + at_most_times(results, "face open: at most 1.12 x opening and the bare walk", faces, "floor: walk", 1.12))


def judge_variations(results):
    group = "instance/Inter"
    made, again = (group, "engine"), (group, "engine, again")
    return ([compare(results, "an instance of Inter: at most 50 ms", group, to_milliseconds, [made], "ms", 50.0),
             compare(results, "an instance again: at most 0.001 x its making", group, divide, [again, made], "x",
                     0.001)]
            + at_most_times(results, "warm text with variations: at most 1.05 x the same in a static font",
                            [f"varied {task}/Inter" for task in ("layout", "draw")], "engine, static font", 1.05))


def judge_emoji(results):
    return at_most_times(results, "warm colour glyph: at most cairo painting the same image",
                         [f"emoji/{size} px" for size in (12, 20, 64, 109)], "floor: cairo paints the images", 1.0)


def judge_start(results):
    return at_most_times(results, "one line, whole process: no slower than pango-view", ["whole process/one line"],
                         "pango-view", 1.0)


def judge(results):
    """Judges every target for every case."""
    parts = (judge_layout, judge_shaping, judge_drawing, judge_threads, judge_growth, judge_memory, judge_vector,
             judge_making, judge_variations, judge_emoji, judge_start)
    return [verdict for judge_part in parts for verdict in judge_part(results)]
