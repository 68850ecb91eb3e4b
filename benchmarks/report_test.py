#!/usr/bin/env python3
"""Tests of what report.py computes."""

import unittest
import xml.etree.ElementTree as xml

from reporting import plot, results, tables, targets


def make_run(name, items_per_second, run_type="iteration", **others):
    return {"run_name": name, "run_type": run_type, "items_per_second": items_per_second, **others}


def make_failure(name, message):
    return {"run_name": name, "run_type": "iteration", "error_occurred": True, "error_message": message}


def make_results(times, memory=()):
    """From {"task/workload": {contestant: nanoseconds}}."""
    groups = {group: {name: results.Figure(time) for name, time in contestants.items()}
              for group, contestants in times.items()}
    return results.Results({}, groups, list(memory))


def find(verdicts, target, case):
    return next(verdict for verdict in verdicts if verdict.target.startswith(target) and verdict.case == case)


class Collecting(unittest.TestCase):
    def test_takes_the_median_of_the_repetitions_and_no_aggregates(self):
        groups = results.collect([make_run("layout/E/engine", 1e9 / time) for time in (90, 10, 30)]
                                 + [make_run("layout/E/engine", 1.0, "aggregate")])
        self.assertAlmostEqual(groups["layout/E"]["engine"].nanoseconds, 30)

    def test_names_lose_what_the_benchmark_library_adds(self):
        self.assertEqual(results.split_name("threads/2 threads/engine, own factory/real_time/threads:2"),
                         ("threads/2 threads", "engine, own factory"))
        self.assertEqual(results.split_name("growth/10 MB/engine/repeats:3"), ("growth/10 MB", "engine"))

    def test_tasks_stand_in_the_order_of_the_report_and_workloads_as_they_were_registered(self):
        shuffled = (("unheard of/x", 0), ("open/CJK", 3), ("layout/E", 9), ("layout/M", 2), ("layout/E", 1))
        groups = results.collect([make_run(f"{group}/{i}", 1.0, family_index=i) for group, i in shuffled])
        self.assertEqual(list(groups), ["layout/E", "layout/M", "open/CJK", "unheard of/x"])

    def test_a_missing_library_is_no_error_and_anything_else_is(self):
        outcome = results.Results(groups=results.collect([make_failure("draw/E/Qt", "not installed"),
                                                          make_failure("draw/E/engine", "drew nothing")]))
        self.assertEqual(outcome.list_errors(), ["draw/E/engine: drew nothing"])
        self.assertIsNone(outcome.get("draw/E", "Qt"))

    def test_one_failed_repetition_spoils_the_figure(self):
        groups = results.collect([make_run("draw/E/Qt", 1e9), make_failure("draw/E/Qt", "gone")])
        self.assertEqual(groups["draw/E"]["Qt"], results.Figure(error="gone"))


class Judging(unittest.TestCase):
    def judge_layout(self, **times):
        return targets.judge_layout(make_results({"layout/E": {"engine": 30.0, **times}}))

    def test_an_upper_limit_is_met_up_to_equality(self):
        for floor, is_met, words in ((20.0, True, "met"), (10.0, False, "missed by 100 %")):
            verdict = find(self.judge_layout(**{targets.HEAVY_KEY: floor}), "warm layout: at most", "layout/E")
            self.assertEqual((verdict.is_met, verdict.describe()), (is_met, words))

    def test_being_faster_is_a_multiple_of_the_engines_time(self):
        for pango, words in ((75.0, "met"), (60.0, "missed by 25 %")):
            verdict = find(self.judge_layout(Pango=pango), "warm layout: at least 2.5 x", "layout/E")
            self.assertAlmostEqual(verdict.value, pango / 30.0)
            self.assertEqual(verdict.describe(), words)

    def test_what_was_not_measured_is_neither_met_nor_missed(self):
        verdict = find(self.judge_layout(), "warm layout: faster than Qt", "layout/E")
        self.assertIsNone(verdict.is_met)
        self.assertEqual(verdict.describe(), "no figure")

    def test_the_replay_of_outlines_is_judged_by_the_difference(self):
        outcome = make_results({"vector replay/E": {"engine": 100.0, "floor: by hand": 35.0}})
        verdict = find(targets.judge_vector(outcome), "warm vector text", "vector replay/E")
        self.assertEqual((verdict.value, verdict.is_met), (65.0, False))

    def test_growth_compares_the_longest_text_with_a_short_one_and_a_long_one(self):
        outcome = make_results({f"growth/{size}": {"engine": time}
                                for size, time in (("10 KB", 100.0), ("1 MB", 112.0), ("10 MB", 140.0))})
        verdicts = targets.judge_growth(outcome)
        self.assertAlmostEqual(find(verdicts, "growth: a glyph of 10 MB at most 1.5 x one of 10 KB", "growth").value, 1.4)
        self.assertEqual(find(verdicts, "growth: a glyph of 10 MB at most 1.2 x one of 1 MB", "growth").describe(),
                         "missed by 4 %")

    def test_thrashing_is_set_beside_the_cold_glyph_of_the_engine(self):
        outcome = make_results({"byte budget/thrashes": {"engine": 130.0}, "cold glyph/bytecode": {"engine": 100.0}})
        self.assertEqual(find(targets.judge_growth(outcome), "thrashing", "byte budget").describe(), "missed by 8 %")

    def test_memory_comes_from_its_own_program(self):
        outcome = make_results({}, [{"name": "mapped character, DejaVu", "value": 20.0, "unit": "bytes"}])
        self.assertFalse(find(targets.judge_memory(outcome), "memory", "DejaVu").is_met)
        self.assertIsNone(find(targets.judge_memory(outcome), "memory", "Noto CJK").is_met)


class Showing(unittest.TestCase):
    def setUp(self):
        self.outcome = make_results({"draw/E": {"Qt": 50.0, "floor: blit": 10.0, "engine": 100.0, "aardvark": 4000.0}})
        self.outcome.groups["draw/E"]["SDL_ttf"] = results.Figure(error="not installed")

    def test_the_engine_comes_first_then_the_floors(self):
        self.assertEqual([row[1:] for row in tables.list_rows(self.outcome)],
                         [["engine", "100.0", ""], ["floor: blit", "10.0", "10.00"], ["Qt", "50.0", "2.00"],
                          ["SDL_ttf", "not installed", ""], ["aardvark", "4,000", "0.03"]])

    def test_a_document_has_a_column_for_each_workload(self):
        self.outcome.groups["draw/M"] = {"engine": results.Figure(200.0)}
        text = tables.make_markdown(self.outcome, [])
        self.assertIn("| ns a glyph | E | M |", text)
        self.assertIn("| engine | 100.0 | 200.0 |", text)
        self.assertIn("| SDL_ttf | not installed |  |", text)

    def test_the_figures_of_a_document_are_replaced_between_their_marks(self):
        text = f"above\n{tables.FIGURES_BEGIN}\nold\n{tables.FIGURES_END}\nbelow\n"
        self.assertEqual(tables.replace_figures(text, "new"),
                         f"above\n{tables.FIGURES_BEGIN}\n\nnew\n\n{tables.FIGURES_END}\nbelow\n")
        for unmarked in ("no marks", tables.FIGURES_BEGIN, tables.FIGURES_END):
            with self.assertRaises(ValueError):
                tables.replace_figures(unmarked, "new")

    def test_the_plot_has_a_bar_for_each_contestant_and_is_well_formed(self):
        root = xml.fromstring(plot.make_svg(self.outcome, "a & b"))
        bars = [element for element in root.iter("{http://www.w3.org/2000/svg}rect")
                if element.get("height") == str(plot.ROW_HEIGHT - 4)]
        self.assertEqual(len(bars), 5)

    def test_the_columns_of_the_plot_are_as_even_as_can_be(self):
        outcome = make_results({f"{task}/x": {str(i): 1.0 for i in range(rows)}
                                for task, rows in (("a", 9), ("b", 1), ("c", 5), ("d", 4))})
        panels = [plot.Panel(task, groups, outcome) for task, groups in tables.list_tasks(outcome).items()]
        self.assertEqual([[panel.task for panel in column] for column in plot.split(panels)], [["a", "b"], ["c", "d"]])

    def test_bars_are_in_proportion_until_they_differ_by_more_than_twenty_times(self):
        self.assertAlmostEqual(plot.Scale([10.0, 100.0]).place(50.0), plot.BAR_WIDTH / 2)
        by_decades = plot.Scale([10.0, 1000.0])
        self.assertTrue(by_decades.is_logarithmic)
        self.assertAlmostEqual(by_decades.place(1000.0), plot.BAR_WIDTH)
        self.assertGreater(by_decades.place(10.0), 0)


if __name__ == "__main__":
    unittest.main()
