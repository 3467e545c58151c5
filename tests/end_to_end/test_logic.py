# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""Testing logic ICs."""

from accessible import has
from case import Scenario
from grid import COLUMNS
from waiting import until_equal
import pyatspi

PINS = "|1|2|3|4|5|6|7|8|9|10|11|12|13|14|||"
# Four NAND gates with every combination of their inputs.
VECTORS = ["0000:|0|0|H|0|0|H|G|H|0|0|H|0|0|V|||",
           "0001:|1|0|H|1|0|H|G|H|1|0|H|1|0|V|||",
           "0002:|0|1|H|0|1|H|G|H|0|1|H|0|1|V|||",
           "0003:|1|1|L|1|1|L|G|L|1|1|L|1|1|V|||"]


class Logic(Scenario):
    """A quadruple NAND gate, sound and broken."""

    def setUp(self):
        super().setUp()
        self.configure(device="7400")

    def table(self, window):
        """The rows of the table."""
        return [window.grid.row(row) for row in range(window.grid.rows())]

    def failures(self, window):
        """What the cells show that are announced as failed."""
        cells = [window.grid.at(row, column) for row in range(window.grid.rows())
                 for column in range(COLUMNS)]
        return [cell.name for cell in cells if cell.description == "failed"]

    def test_a_sound_chip_passes_and_shows_its_levels(self):
        window = self.start()
        output = window.operate("Logic test")
        until_equal(window.heading, "Logic test successful.", "the heading")
        self.assertEqual(self.table(window), [PINS, *VECTORS])
        self.assertEqual(self.failures(window), [])
        self.assertIn("0003:", output)
        self.assertTrue(has(window.control("Logic test results"), pyatspi.STATE_FOCUSED))
        self.finish(window)

    def test_a_broken_pin_is_announced_as_failed(self):
        window = self.start(MINIPRO_SIM_FAULT="bad-logic-pins")
        window.operate("Logic test", status=1)
        until_equal(window.heading, "Logic test failed: 1 errors encountered.", "the heading")
        self.assertEqual(self.table(window), [PINS, *VECTORS])
        self.assertEqual(self.failures(window), ["L"])
        self.assertEqual(window.grid.at(4, 3).description, "failed")
        self.assertIn("Problem: Logic test failed", window.message())
        self.finish(window)

    def test_the_next_tab_takes_the_results_away(self):
        window = self.start()
        window.operate("Logic test")
        until_equal(window.grid.rows, 1 + len(VECTORS), "the number of rows")
        window.show("Data read from chip")
        until_equal(window.heading, "Data read from chip:", "the heading")
        window.show("Logic test results")
        until_equal(window.grid.rows, 1, "the number of rows")
        self.finish(window)
