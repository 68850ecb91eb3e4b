"""What the engine shall reach, and whether a run shows that it does."""

from dataclasses import dataclass

LATIN = ("E", "M", "L")
TEXTS = ("E", "M", "L", "CJK")
HEAVY_KEY = "floor: heavy key, locked, shared"


@dataclass
class Verdict:
    """One target for one case. `value` is None where the run has no figure."""

    target: str
    case: str
    value: float | None
    unit: str
    limit: float
    is_upper: bool = True

    @property
    def is_met(self):
        if self.value is None:
            return None
        return self.value <= self.limit if self.is_upper else self.value >= self.limit

    def describe(self):
        if self.is_met is None:
            return "no figure"
        if self.is_met:
            return "met"
        share = self.value / self.limit if self.is_upper else self.limit / self.value
        return f"missed by {100 * (share - 1):.0f} %"


def divide(dividend, divisor):
    return None if dividend is None or not divisor else dividend / divisor


def subtract(minuend, subtrahend):
    return None if minuend is None or subtrahend is None else minuend - subtrahend


def at_most_times(results, target, groups, reference, factor):
    """The engine's time as a multiple of a floor's."""
    return [Verdict(target, group, divide(results.get(group, "engine"), results.get(group, reference)), "x", factor)
            for group in groups]


def faster(results, target, groups, peer, factor=1.0):
    """A peer's time as a multiple of the engine's."""
    return [Verdict(target, group, divide(results.get(group, peer), results.get(group, "engine")), "x", factor, False)
            for group in groups]


def judge_layout(results):
    groups = [f"layout/{text}" for text in LATIN]
    return (at_most_times(results, "warm layout: at most 1.5 x the locked heavy-key floor", groups, HEAVY_KEY, 1.5)
            + faster(results, "warm layout: at least 2.5 x faster than Pango", groups, "Pango", 2.5)
            + faster(results, "warm layout: faster than Qt", groups, "Qt"))


def judge_drawing(results):
    groups = [f"draw/{text}" for text in TEXTS]
    return [verdict for peer in ("cairo show_text", "Qt", "Pango")
            for verdict in faster(results, f"warm drawing: faster than {peer}", groups, peer)]


def judge_vector(results):
    groups = [f"vector replay/{text}" for text in TEXTS]
    return [Verdict("warm vector text: at most 60 ns a glyph more than by hand", group,
                    subtract(results.get(group, "engine"), results.get(group, "floor: by hand")), "ns", 60.0)
            for group in groups]


def judge_making(results):
    glyphs = [f"cold glyph/{kind}" for kind in ("bytecode", "auto-hinter", "unhinted")]
    faces = [f"open/{font}" for font in ("DejaVu", "Noto CJK")]
    return (at_most_times(results, "cold glyph: at most 1.15 x FreeType's three calls", glyphs, "floor: FreeType", 1.15)
            + at_most_times(results, "face open: at most 1.20 x opening and the bare walk", faces, "floor: walk", 1.20))


def judge_colour(results):
    return [Verdict("coloured image: at most 3 ns a pixel", group, results.get(group, "engine"), "ns", 3.0)
            for group in ("colour/9 x 12", "colour/18 x 24", "colour/36 x 48")]


def judge_memory(results):
    return [Verdict("memory: at most 16 bytes a mapped character", font,
                    results.get_memory(f"mapped character, {font}"), "bytes", 16.0)
            for font in ("DejaVu", "Noto CJK")]


def compare_lengths(results, shorter, factor):
    ratio = divide(results.get("growth/10 MB", "engine"), results.get(f"growth/{shorter}", "engine"))
    return [Verdict(f"growth: a glyph of 10 MB at most {factor} x one of {shorter}", "growth", ratio, "x", factor)]


def judge_growth(results):
    caches = [group for group in results.groups if group.startswith("cache hit/")]
    thrashing = divide(results.get("byte budget/thrashes", "engine"), results.get("cold glyph/bytecode", "engine"))
    return (compare_lengths(results, "10 KB", 1.5)  # the run of 10 MB leaves the processor's caches, this one fits
            + compare_lengths(results, "1 MB", 1.2)
            + at_most_times(results, "cache hits: at most 1.2 x the plain multi-index", caches, "floor: multi-index",
                            1.2)
            + [Verdict("thrashing: at most 1.2 x the cold glyph", "byte budget", thrashing, "x", 1.2)])


def judge(results):
    """Every target for every case."""
    return (judge_layout(results) + judge_drawing(results) + judge_vector(results) + judge_making(results)
            + judge_colour(results) + judge_memory(results) + judge_growth(results))
