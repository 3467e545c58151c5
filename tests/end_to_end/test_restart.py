# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""Starting again."""

import subprocess

import pyatspi

import screen
from accessible import has
from case import Scenario
from program import Home
from waiting import until, until_equal

ROM = b"What the last time has left."
SECOND_START_PATIENCE = 20


class Restart(Scenario):
    """What a start finds of the one before, and of one that still runs."""

    def setUp(self):
        super().setUp()
        self.configure()

    def test_settings_and_the_opened_binary_are_back(self):
        rom = self.home.folder / "rom.bin"
        rom.write_bytes(ROM)
        window = self.start()
        window.press("Open binary")
        window.dialog("Open binary").give_path(rom, "Open")
        until_equal(lambda: window.text("Opened binary"), str(rom), "the opened path")
        window.type("Device", "7400")
        window.type("Start address", "10")
        window.switch("Skip erase")
        window.switch("Ignore size mismatch", False)
        window.switch("0x00")
        window.switch("Use data read from chip")
        self.finish(window)

        window = self.start()
        self.assertEqual(window.text("Device"), "7400")
        self.assertEqual(window.text("Opened binary"), str(rom))
        self.assertEqual(window.text("Start address"), "10")
        switches = ("Skip erase", "Ignore size mismatch", "0x00", "0xFF",
                    "Use data read from chip")
        self.assertEqual([window.is_on(name) for name in switches],
                         [True, False, True, False, False])
        window.show("Data to burn")
        self.see_image(window, b"\0" * 16 + ROM)
        self.assert_same_bytes(self.home.image(), b"\0" * 16 + ROM)
        self.finish(window)

    def test_an_opened_binary_that_has_gone_is_said(self):
        gone = self.home.folder / "gone.bin"
        self.configure(binary=gone)
        window = self.start()
        self.assertIn(f"The opened binary could not be read: {gone}", window.message())
        self.assertEqual(window.text("Opened binary"), str(gone))
        self.finish(window)

    def test_a_second_start_raises_the_first_window_and_ends_well(self):
        first = self.start()
        other_home = Home(self.home.folder / "other")
        first_home, self.home = self.home, other_home
        other = self.start()
        self.home = first_home
        until(lambda: has(other.node, pyatspi.STATE_ACTIVE), "the other window to be in front")
        until(lambda: not has(first.node, pyatspi.STATE_ACTIVE), "the first window to be behind")
        below = screen.stack()

        second = self.home.start()
        self.assertEqual(second.wait(SECOND_START_PATIENCE), 0)
        until_equal(screen.stack, below[::-1], "the first window on top")
        self.assertEqual(first.process.poll(), None)
        self.finish(first)
        self.finish(other)

    def test_a_start_while_the_first_does_not_answer_says_so(self):
        first = self.start()
        first.process.send_signal(19)
        self.addCleanup(first.process.send_signal, 18)
        second = self.home.start()
        self.assertEqual(second.wait(SECOND_START_PATIENCE), 1)
        self.assertIn("velm: VELM is already running", self.home.log.read_text())
        first.process.send_signal(18)
        self.finish(first)
