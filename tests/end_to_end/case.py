"""What every scenario shares: a program in a home of its own, and evidence when it fails."""

import functools
import os
import tempfile
import unittest
from pathlib import Path

import screen
from accessible import picture
from program import SIMULATOR, Home, appears, end
from waiting import until
from window import MainWindow

DEVICE = "W27C512@DIP28"


class Scenario(unittest.TestCase):
    """A test with a program. Its methods' names say what a user does and gets."""

    def __init__(self, method="runTest"):
        super().__init__(method)
        setattr(self, method, functools.partial(self._with_evidence, getattr(self, method)))

    def setUp(self):
        self.home = Home(Path(tempfile.mkdtemp(dir=os.environ["VELM_FOLDER"])))
        self.applications = []

    def configure(self, **settings):
        """Gives the home a simulated programmer, a device and further \\a settings."""
        self.home.configure(**{"device": DEVICE, "miniproLocation": SIMULATOR, **settings})

    def start(self, **environment):
        """Starts the program, which must end well when the scenario is over."""
        process = self.home.start(**environment)
        self.addCleanup(end, process)
        application = appears(process)
        self.applications.append(application)
        window = MainWindow(application[0])
        window.process = process
        until(screen.give_keyboard, "a window on the display")
        return window

    def finish(self, window):
        """Ends the program of \\a window, which must report success."""
        self.assertEqual(end(window.process), 0, "the program's status")

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
