"""Turns the results of the benchmarks into tables, verdicts on the targets, and a plot."""
