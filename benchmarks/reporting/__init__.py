"""Turns the outcome of the benchmarks into tables, a verdict on each target, and a plot."""
