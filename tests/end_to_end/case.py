# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""What every scenario shares: a program in a home of its own, and evidence when it fails."""

import functools
import os
import tempfile
import unittest
from pathlib import Path

import screen
from accessible import picture
from grid import BYTES_IN_ROW, row_of_bytes
from program import SIMULATOR, Home, appears, end, end_again
from waiting import until, until_equal
from window import MainWindow

DEVICE = "W27C512@DIP28"
# What see_image() looks at; the rest follows the same rule.
FIRST_ROWS = 6


class Scenario(unittest.TestCase):
    """A test with a program. Its methods' names say what a user does and gets."""

    def __init__(self, method="runTest"):
        super().__init__(method)
        setattr(self, method, functools.partial(self._with_evidence, getattr(self, method)))

    def setUp(self):
        self.home = Home(Path(tempfile.mkdtemp(dir=os.environ["VELM_FOLDER"])))
        self.applications = []

    def configure(self, **settings):
        """Gives the home a simulated programmer, a device and further settings."""
        self.home.configure(**{"device": DEVICE, "miniproLocation": SIMULATOR, **settings})

    def start(self, **environment):
        """Starts the program, which must end well when the scenario is over."""
        process = self.home.start(**environment)
        self.addCleanup(end, process)
        application = appears(process)
        self.applications.append(application)
        window = MainWindow(application)
        window.process = process
        until(screen.give_keyboard, "a window on the display")
        return window

    def see_image(self, window, image):
        """Waits until the table's first rows, and their number, are those of image."""
        until_equal(window.grid.rows, len(image) // BYTES_IN_ROW + 1, "the number of rows")
        for row in range(min(FIRST_ROWS, window.grid.rows())):
            until_equal(lambda at=row: window.grid.row(at), row_of_bytes(image, row),
                        f"row {row}")

    def assert_same_bytes(self, found, expected):
        """Compares without printing a chip's whole content."""
        at = next((index for index, (one, other) in enumerate(zip(found, expected))
                   if one != other), min(len(found), len(expected)))
        if found != expected:
            self.fail(f"{len(found)} bytes, expected {len(expected)}; from 0x{at:X} on "
                      f"{found[at:at + BYTES_IN_ROW]!r}, expected "
                      f"{expected[at:at + BYTES_IN_ROW]!r}")

    def finish(self, window):
        """Ends the program of window, which must report success."""
        self.assertEqual(end(window.process), 0, "the program's status")

    def finish_giving_up_edits(self, window):
        """Ends the program of window, which asks first because the edits are in no file."""
        window.process.terminate()
        until(lambda: "in no file" in window.message(), "the question whether to give up the edits")
        self.assertIsNone(window.process.poll())
        # The second time counts once it can be no slip of the first.
        until(lambda: end_again(window.process), "the end of the program")
        self.assertEqual(window.process.wait(), 0, "the program's status")

    def _with_evidence(self, method):
        try:
            method()
        except Exception:
            self._leave_evidence()
            raise

    def _leave_evidence(self):
        output = Path(os.environ["VELM_OUTPUT"])
        output.mkdir(parents=True, exist_ok=True)
        image = output / f"{self.id()}.png"
        screen.save_picture(os.environ["VELM_SCREEN"], image)
        print(f"\nThe screen: {image}\nThe accessible tree:")
        for application in self.applications:
            print(picture(application))
        print("The program's log ends with:")
        print(self.home.log.read_text(encoding="utf-8", errors="replace")[-3000:], flush=True)
