#!/usr/bin/env python3
"""Tests of what house.py finds."""
import unittest

from house import find_neighbours


class FindNeighbours(unittest.TestCase):
    def test_leaves_out_an_arrow_that_follows_from_others(self):
        house = {"top": ["middle", "bottom"], "middle": ["bottom"], "bottom": []}
        self.assertEqual(find_neighbours(house), {"top": ["middle"], "middle": ["bottom"], "bottom": []})

    def test_leaves_out_an_arrow_that_follows_from_a_chain(self):
        house = {"top": ["third", "bottom"], "third": ["second"], "second": ["bottom"], "bottom": []}
        self.assertEqual(find_neighbours(house)["top"], ["third"])

    def test_keeps_two_floors_that_do_not_know_each_other(self):
        house = {"top": ["left", "right", "bottom"], "left": ["bottom"], "right": ["bottom"], "bottom": []}
        self.assertEqual(find_neighbours(house)["top"], ["left", "right"])

    def test_keeps_a_floor_that_is_skipped_by_all_others(self):
        self.assertEqual(find_neighbours({"top": ["bottom"], "middle": [], "bottom": []})["top"], ["bottom"])


if __name__ == "__main__":
    unittest.main()
