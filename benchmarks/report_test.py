#!/usr/bin/env python3
"""Tests for report.py and whole_process.py."""

import json
import tempfile
import unittest
import xml.etree.ElementTree as xml

import whole_process
from reporting import plot, results, tables, targets


def make_run(name, items_per_second, run_type="iteration", **others):
    return {"run_name": name, "run_type": run_type, "items_per_second": items_per_second, **others}


def make_failure(name, message):
    return {"run_name": name, "run_type": "iteration", "error_occurred": True, "error_message": message}


def make_results(times, memory=()):
    """Results from {"task/workload": {contestant: nanoseconds}}."""
    groups = {group: {name: make_figure(time) for name, time in contestants.items()}
              for group, contestants in times.items()}
    return results.Results({}, groups, list(memory))


def make_figure(*minima):
    return results.Figure(minima)


def make_process(times):
    """The runs of a process with {"task/workload/contestant": [nanoseconds]}."""
    return [make_run(name, 1e9 / time) for name, repetitions in times.items() for time in repetitions]


def collect(*processes):
    """The results of processes, each given as make_process takes it."""
    return results.Results(groups=results.collect([make_process(times) for times in processes]))


def find(verdicts, target, case):
    return next(verdict for verdict in verdicts if verdict.target.startswith(target) and verdict.case == case)


class Collecting(unittest.TestCase):
    def test_takes_the_shortest_repetition_of_each_process_and_no_aggregates(self):
        process = make_process({"layout/E/engine": (90, 10, 30)}) + [make_run("layout/E/engine", 1e12, "aggregate")]
        figure = results.collect([process, make_process({"layout/E/engine": (20, 14)})])["layout/E"]["engine"]
        for minimum, expected in zip(figure.minima, (10, 14), strict=True):
            self.assertAlmostEqual(minimum, expected)

    def test_shows_the_median_of_the_processes(self):
        self.assertEqual(make_figure(30.0, 10.0, 20.0).nanoseconds, 20.0)

    def test_names_lose_the_suffixes_of_the_benchmark_library(self):
        self.assertEqual(results.split_name("threads/2 threads/engine, own factory/real_time/threads:2"),
                         ("threads/2 threads", "engine, own factory"))
        self.assertEqual(results.split_name("growth/10 MB/engine/repeats:3"), ("growth/10 MB", "engine"))

    def test_tasks_are_in_the_order_of_the_report_and_workloads_in_that_of_registration(self):
        shuffled = (("unheard of/x", 0), ("open/CJK", 3), ("layout/E", 9), ("layout/M", 2), ("layout/E", 1))
        groups = results.collect([[make_run(f"{group}/{i}", 1.0, family_index=i) for group, i in shuffled]])
        self.assertEqual(list(groups), ["layout/E", "layout/M", "open/CJK", "unheard of/x"])

    def test_every_failure_but_a_missing_library_is_an_error(self):
        outcome = results.Results(groups=results.collect([[make_failure("draw/E/Qt", "not installed"),
                                                           make_failure("draw/E/engine", "drew nothing")]]))
        self.assertEqual(outcome.list_errors(), ["draw/E/engine: drew nothing"])
        self.assertIsNone(outcome.find("draw/E", "Qt").nanoseconds)
        self.assertIsNone(outcome.find("draw/E", "Pango"))

    def test_one_failed_repetition_of_one_process_spoils_the_figure(self):
        groups = results.collect([[make_run("draw/E/Qt", 1e9)],
                                  [make_run("draw/E/Qt", 1e9), make_failure("draw/E/Qt", "gone")]])
        self.assertEqual(groups["draw/E"]["Qt"], results.Figure(error="gone"))

    def test_a_row_that_a_process_lacks_is_an_error(self):
        outcome = collect({"draw/E/Qt": [1.0], "draw/E/engine": [2.0]}, {"draw/E/engine": [2.0]})
        self.assertEqual(outcome.list_errors(), ["draw/E/Qt: missing from a process"])


class Combining(unittest.TestCase):
    def test_contestants_are_compared_within_each_process_and_the_median_decides(self):
        engine = make_figure(10.0, 30.0, 40.0)
        floor = make_figure(20.0, 10.0, 20.0)  # 0.5, 3 and 2 times; the medians of the times would give 1.5
        self.assertEqual(results.combine(targets.divide, engine, floor), 2.0)

    def test_without_one_of_the_figures_there_is_nothing_to_compare(self):
        for missing in (None, results.Figure(error="not installed")):
            self.assertIsNone(results.combine(targets.divide, make_figure(1.0), missing))
            self.assertIsNone(results.combine(targets.divide, missing, make_figure(1.0)))


class Noise(unittest.TestCase):
    def is_noisy(self, *processes):
        return collect(*({"layout/E/Qt": times} for times in processes)).find("layout/E", "Qt").is_noisy

    def test_is_a_process_whose_median_exceeds_its_minimum_by_a_tenth(self):
        self.assertFalse(self.is_noisy([100, 109, 105]))
        self.assertTrue(self.is_noisy([100, 111, 112]))
        self.assertTrue(self.is_noisy([100, 101, 101], [100, 111, 112], [100, 101, 101]))

    def test_is_not_a_single_outlier(self):
        self.assertFalse(self.is_noisy([100, 101, 400]))

    def test_is_a_difference_of_a_tenth_between_processes(self):
        self.assertFalse(self.is_noisy([100], [109], [104]))
        self.assertTrue(self.is_noisy([100], [111], [104]))

    def test_a_missing_contestant_has_no_noise(self):
        self.assertFalse(results.Figure(error="not installed").is_noisy)

    def test_the_report_names_noisy_rows_and_asks_for_another_run_if_a_target_depends_on_one(self):
        outcome = collect({f"layout/E/{name}": [time, 2 * time, 2 * time]
                           for name, time in (("engine", 30), ("Qt", 90))})
        text = tables.make_text(outcome, targets.judge(outcome))
        self.assertIn("Varied by more than 10 %: layout/E/engine; layout/E/Qt.", text)
        self.assertRegex(text.splitlines()[-1], "rest on 1 of these rows: repeat the run")

    def test_noise_that_no_target_depends_on_needs_no_other_run(self):
        outcome = collect({"layout/E/Qt": [30, 60, 60], "layout/E/engine": [30, 30, 30]})
        self.assertEqual(tables.make_text(outcome, targets.judge(outcome)).splitlines()[-1],
                         "Varied by more than 10 %: layout/E/Qt.")

    def test_a_quiet_run_mentions_no_noise(self):
        outcome = collect({"layout/E/engine": [30, 30, 31]})
        self.assertNotIn("Varied", tables.make_text(outcome, targets.judge(outcome)))

    def test_a_verdict_that_depends_on_a_noisy_row_says_so(self):
        for times, words in (([200, 200, 201], "met"), ([200, 300, 300], "met, but noisy")):
            outcome = collect({"layout/E/Pango": times, "layout/E/engine": [30, 30, 30]})
            verdict = find(targets.judge_layout(outcome), "warm layout: at most 0.25 x Pango", "layout/E")
            self.assertEqual(verdict.describe(), words)

    def test_a_document_shows_how_much_a_noisy_row_varies(self):
        outcome = collect({"layout/E/Qt": [30], "layout/M/Qt": [30]}, {"layout/E/Qt": [30], "layout/M/Qt": [60]})
        self.assertIn("| Qt | 30.0 | 45.0 ±100 % |", tables.make_markdown(outcome, []))


class Judging(unittest.TestCase):
    def judge_layout(self, **times):
        return targets.judge_layout(make_results({"layout/E": {"engine": 30.0, **times}}))

    def test_an_upper_limit_is_met_up_to_equality(self):
        for pango, is_met, words in ((120.0, True, "met"), (60.0, False, "missed by 100 %")):
            verdict = find(self.judge_layout(Pango=pango), "warm layout: at most 0.25 x Pango", "layout/E")
            self.assertEqual((verdict.is_met, verdict.describe()), (is_met, words))

    def test_being_faster_is_a_multiple_of_the_engines_time(self):
        for sdl, words in ((30.0, "met"), (24.0, "missed by 25 %")):
            verdict = find(self.judge_layout(SDL_ttf=sdl), "warm layout: faster than SDL_ttf", "layout/E")
            self.assertAlmostEqual(verdict.value, sdl / 30.0)
            self.assertEqual(verdict.describe(), words)

    def test_what_was_not_measured_is_neither_met_nor_missed(self):
        verdict = find(self.judge_layout(), "warm layout: faster than SDL_ttf", "layout/E")
        self.assertIsNone(verdict.is_met)
        self.assertEqual(verdict.describe(), "no figure")

    def test_the_median_of_the_processes_is_judged(self):
        outcome = collect(*({"draw/E/engine": [100], "draw/E/cairo show_text": [time]} for time in (120, 90, 110)))
        verdict = find(targets.judge_drawing(outcome), "warm drawing: at least 1.15 x", "draw/E")
        self.assertAlmostEqual(verdict.value, 1.1)
        self.assertFalse(verdict.is_met)

    def test_coloured_underscores_and_dense_pages_need_only_be_as_fast(self):
        outcome = make_results({group: {"engine": 100.0, targets.SHOW_TEXT: 100.0}
                                for group in ("draw/form", "draw/E", "draw at ratio 2/E", "draw at ratio 2/code")})
        verdicts = {verdict.case: verdict.is_met for verdict in targets.judge_drawing(outcome) if verdict.value}
        self.assertEqual(verdicts, {"draw/E": False, "draw/form": True, "draw at ratio 2/E": True,
                                    "draw at ratio 2/code": True})

    def test_instances_are_judged_by_their_time_and_by_what_they_cost_again(self):
        outcome = make_results({"instance/Inter": {"engine": 40e6, "engine, again": 100e3}})
        verdicts = targets.judge_variations(outcome)
        self.assertEqual(find(verdicts, "an instance of Inter", "instance/Inter").value, 40.0)
        again = find(verdicts, "an instance again", "instance/Inter")
        self.assertAlmostEqual(again.value, 0.0025)
        self.assertFalse(again.is_met)

    def test_the_replay_of_outlines_is_judged_by_the_difference(self):
        outcome = make_results({"vector replay/E": {"engine": 100.0, "floor: by hand": 60.0}})
        verdict = find(targets.judge_vector(outcome), "warm vector text", "vector replay/E")
        self.assertEqual((verdict.value, verdict.is_met), (40.0, False))

    def test_growth_compares_the_longest_text_with_a_short_one(self):
        outcome = make_results({f"growth/{size}": {"engine": time}
                                for size, time in (("10 KB", 100.0), ("10 MB", 143.0))})
        self.assertEqual(find(targets.judge_growth(outcome), "growth", "growth").describe(), "missed by 10 %")

    def test_two_threads_are_compared_with_one_thread_on_the_same_factory(self):
        outcome = make_results({f"threads/{count}": {"engine, shared factory": time, "engine, own factory": 1.0}
                                for count, time in (("1 thread", 100.0), ("2 threads", 250.0))})
        verdict = find(targets.judge_threads(outcome), "two threads", "threads")
        self.assertEqual((verdict.value, verdict.is_met), (2.5, False))

    def test_a_whole_process_is_compared_with_pango_view(self):
        outcome = make_results({"whole process/one line": {"engine": 30e6, "pango-view": 40e6}})
        self.assertEqual(find(targets.judge_start(outcome), "one line", "whole process/one line").value, 0.75)

    def test_memory_comes_from_its_own_program(self):
        outcome = make_results({}, [{"name": "sizeof(BitmapGlyph)", "value": 40.0, "unit": "bytes"}])
        self.assertFalse(find(targets.judge_memory(outcome), "memory", "sizeof(BitmapGlyph)").is_met)
        self.assertIsNone(find(targets.judge_memory(outcome), "memory", "cached glyph, beyond its pixels").is_met)

    def test_every_judged_time_names_the_rows_that_it_depends_on(self):
        for verdict in targets.judge(make_results({})):
            self.assertEqual(len(verdict.rows), {"bytes": 0, "ms": 1}.get(verdict.unit, 2), verdict.target)


class WholeProcess(unittest.TestCase):
    def test_contestants_run_in_turn_and_the_first_one_changes(self):
        runs = whole_process.measure_all({"a": ["true"], "b": ["true"]}, 2)
        self.assertEqual([run["run_name"].rsplit("/", 1)[1] for run in runs], ["b", "a", "a", "b"])

    def test_a_program_that_is_absent_or_fails_has_no_figure(self):
        runs = whole_process.measure_all({"absent": ["no such program"], "failing": ["false"], "able": ["true"]}, 3)
        figures = results.collect([runs])[whole_process.GROUP]
        self.assertEqual(figures["absent"].error, results.NOT_INSTALLED)
        self.assertIn("exit status 1", figures["failing"].error)
        self.assertGreater(figures["able"].nanoseconds, 0)

    def test_its_runs_are_added_to_a_file_with_or_without_benchmarks(self):
        for before, count in (("", 1), (json.dumps({"benchmarks": make_process({"draw/E/Qt": [1, 2]})}), 3)):
            with tempfile.NamedTemporaryFile("w+") as file:
                file.write(before)
                file.flush()
                whole_process.add_to(file.name, make_process({f"{whole_process.GROUP}/engine": [3]}))
                self.assertEqual(len(results.load(file.name)["benchmarks"]), count)

    def test_a_filter_selects_what_it_selects_in_the_benchmarks(self):
        for pattern, is_wanted in ((".", True), ("whole", True), ("layout", False), ("-layout", True),
                                   ("-whole", False)):
            self.assertEqual(whole_process.is_wanted("whole process/one line/engine", pattern), is_wanted)


class Showing(unittest.TestCase):
    def setUp(self):
        self.outcome = make_results({"draw/E": {"Qt": 50.0, "floor: blit": 10.0, "engine": 100.0, "aardvark": 4000.0}})
        self.outcome.groups["draw/E"]["SDL_ttf"] = results.Figure(error="not installed")

    def test_the_engine_comes_first_then_the_floors(self):
        self.assertEqual([row[1:] for row in tables.list_rows(self.outcome)],
                         [["engine", "100.0", "", ""], ["floor: blit", "10.0", "10.00", ""], ["Qt", "50.0", "2.00", ""],
                          ["SDL_ttf", "not installed", "", ""], ["aardvark", "4,000", "0.03", ""]])

    def test_a_document_has_a_column_for_each_workload(self):
        self.outcome.groups["draw/M"] = {"engine": make_figure(200.0)}
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

    def test_the_columns_of_the_plot_are_as_even_as_possible(self):
        outcome = make_results({f"{task}/x": {str(i): 1.0 for i in range(rows)}
                                for task, rows in (("a", 9), ("b", 1), ("c", 5), ("d", 4))})
        panels = [plot.Panel(task, groups, outcome) for task, groups in tables.list_tasks(outcome).items()]
        self.assertEqual([[panel.task for panel in column] for column in plot.split(panels)], [["a", "b"], ["c", "d"]])

    def test_bars_are_linear_until_they_differ_more_than_twentyfold(self):
        self.assertAlmostEqual(plot.Scale([10.0, 100.0]).place(50.0), plot.BAR_WIDTH / 2)
        by_decades = plot.Scale([10.0, 1000.0])
        self.assertTrue(by_decades.is_logarithmic)
        self.assertAlmostEqual(by_decades.place(1000.0), plot.BAR_WIDTH)
        self.assertGreater(by_decades.place(10.0), 0)


if __name__ == "__main__":
    unittest.main()
