# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""Writing chips and comparing them."""

import keyboard
from case import DEVICE, Scenario
from waiting import until

FIRST_BYTE = 0x53


class Burn(Scenario):
    """What was read goes back to the chip, with one byte changed."""

    def setUp(self):
        super().setUp()
        self.configure()
        self.window = self.start()
        self.window.operate("Read")
        self.before = self.home.chip(DEVICE)
        self.assertEqual(self.before[0], FIRST_BYTE)
        self.window.switch("Use data read from chip")
        self.window.show("Data to burn")
        self.see_image(self.window, self.before)
        self.window.grid.open_cell(0, 1)
        keyboard.write("7a")
        keyboard.press("Return")
        self.changed = b"\x7a" + self.before[1:]
        self.see_image(self.window, self.changed)

    def test_verify_finds_the_difference_until_write_has_removed_it(self):
        output = self.window.operate("Verify", status=1)
        self.assertIn("Verification failed at address 0x0000: File=0x7A, Device=0x53", output)
        self.assertIn("Problem: Verify failed", self.window.message())

        output = self.window.operate("Write")
        self.assertIn("Writing Code...", output)
        self.assertIn("Done: Write succeeded", self.window.message())
        self.assert_same_bytes(self.home.chip(DEVICE), self.changed)

        output = self.window.operate("Verify")
        self.assertIn("Verification OK", output)
        self.assertIn("Done: Verify succeeded", self.window.message())
        self.see_image(self.window, self.changed)
        self.finish_giving_up_edits(self.window)

    def test_a_chip_that_takes_a_byte_badly_is_said(self):
        self.finish_giving_up_edits(self.window)
        (self.home.folder / "rom.bin").write_bytes(self.changed)
        self.configure(binary=self.home.folder / "rom.bin")
        window = self.start(MINIPRO_SIM_FAULT="bad-byte")
        output = window.operate("Write", status=1)
        self.assertIn("Verification failed at address 0x1234: File=0x20, Device=0xDF", output)
        self.assertIn("Problem: Write failed", window.message())
        self.finish(window)

    def test_nothing_to_burn_takes_two_presses(self):
        self.window.switch("Use data read from chip", False)
        self.see_image(self.window, b"")
        before = self.window.console()
        self.window.press("Write")
        until(lambda: "There are no data to burn" in self.window.message(), "the warning")
        self.assertEqual(self.window.console(), before)
        self.assert_same_bytes(self.home.chip(DEVICE), self.before)
        self.finish_giving_up_edits(self.window)
