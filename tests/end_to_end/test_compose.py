# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""Making the data to burn out of what was read."""

from case import Scenario
from grid import row_of_bytes
from waiting import until_equal

SMALL_DEVICE = "24C02"
SMALL_SIZE = 256
KIB = 1024


class Compose(Scenario):
    """A small chip's bytes, padded. Every step shows in the table and is on disk."""

    def setUp(self):
        super().setUp()
        self.configure(device=SMALL_DEVICE)
        self.window = self.start()
        self.window.operate("Read")
        self.chip = self.home.chip(SMALL_DEVICE)
        self.assertEqual(len(self.chip), SMALL_SIZE)
        self.window.show("Data to burn")
        until_equal(self.window.heading, "Data to burn:", "the heading")

    def see(self, image):
        """The table shows image, and the file for the tool holds it."""
        self.see_image(self.window, image)
        self.assert_same_bytes(self.home.image(), image)

    def test_what_was_read_is_burned_only_when_that_is_switched_on(self):
        self.see(b"")
        self.window.switch("Use data read from chip")
        self.see(self.chip)
        self.window.switch("Use data read from chip", False)
        self.see(b"")
        self.finish(self.window)

    def test_padding_fills_up_with_the_chosen_byte(self):
        self.window.switch("Use data read from chip")
        self.window.type("Pad to", "1")
        self.see(self.chip)
        self.window.switch("Pad")
        padded = self.chip + b"\xff" * (KIB - SMALL_SIZE)
        self.see(padded)
        self.assertEqual(self.window.grid.row(63), row_of_bytes(padded, 63))
        self.window.switch("0x00")
        zeros = self.chip + b"\0" * (KIB - SMALL_SIZE)
        self.see(zeros)
        self.assertEqual(self.window.grid.row(63), row_of_bytes(zeros, 63))
        self.finish(self.window)

    def test_a_text_set_by_assistive_technology_counts_without_enter(self):
        self.window.switch("Pad")
        self.window.fill("Pad to", "2")
        self.see(b"\xff" * 2 * KIB)
        self.window.fill("Start address", "1000")
        self.see(b"\xff" * 4 * KIB)
        self.finish(self.window)

    def test_a_pad_size_that_is_no_number_is_said(self):
        self.window.switch("Pad")
        self.window.type("Pad to", "much")
        until_equal(lambda: "Pad to holds no number" in self.window.message(), True,
                    "the sentence about the pad size")
        self.see(b"")
        self.finish(self.window)
