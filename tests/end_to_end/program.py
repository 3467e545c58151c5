# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""The installed program, started as a desktop starts it, in a home of its own."""

import os
import subprocess
from pathlib import Path

from accessible import application
from waiting import until

PREFIX = Path(os.environ["VELM_PREFIX"])
SIMULATOR = PREFIX / "bin" / "minipro-sim"
PATIENCE_AT_END = 20
# Longer than the presses of a double-click are apart.
PAUSE_BETWEEN_REQUESTS = 0.6
# The toolkit does not give back all that it takes for a window on a display; what the program
# itself leaves behind is found by the tests that need no display.
NO_LEAK_CHECK = "detect_leaks=0"


class Home:
    """A user's home folder with the simulated chips; the program can be started in it."""

    def __init__(self, folder):
        self.folder = folder
        self.bench = folder / "bench"
        self.workspace = folder / "data" / "VELM"
        self.settings = folder / "config" / "velm" / "velm.conf"
        self.memory = folder / "state" / "velm" / "state.conf"
        self.log = folder / "log.txt"

    def configure(self, **settings):
        """Writes the settings file; a user who starts for the first time has none. The tool in it
        is one that was set in the program."""
        write_ini(self.settings, settings)
        write_ini(self.memory, {"trustedTool": settings.get("miniproLocation", "")})

    def environment(self, **further):
        """What a session gives to the program, and further variables."""
        result = dict(os.environ)
        options = filter(None, [result.get("ASAN_OPTIONS"), NO_LEAK_CHECK])
        result.update(
            HOME=str(self.folder), XDG_DATA_HOME=str(self.folder / "data"),
            XDG_CONFIG_HOME=str(self.folder / "config"),
            XDG_STATE_HOME=str(self.folder / "state"),
            XDG_CACHE_HOME=str(self.folder / "cache"), ASAN_OPTIONS=":".join(options),
            MINIPRO_SIM_BENCH=str(self.bench), MINIPRO_SIM_PACE="instant", **further)
        return result

    def start(self, **environment):
        """Starts the program; returns its process. What it logs goes to the file log."""
        self.folder.mkdir(parents=True, exist_ok=True)
        with open(self.log, "ab") as log:
            return subprocess.Popen([PREFIX / "bin" / "velm"], cwd=self.folder, stderr=log,
                                    env=self.environment(**environment))

    def open(self, path):
        """Starts the program once more, with a file for the window that there is."""
        subprocess.run([PREFIX / "bin" / "velm", str(path)], cwd=self.folder,
                       env=self.environment(), timeout=PATIENCE_AT_END, check=True)

    def chip(self, device):
        """The bytes that the simulated chip device holds."""
        return (self.bench / f"{device}.bin").read_bytes()

    def image(self):
        """The data to burn, as the file that the tool is given holds it."""
        return (self.workspace / "temp.bin").read_bytes()


def write_ini(path, values):
    """Writes a file of the program's with these keys."""
    lines = [f'{key}="{value}"' for key, value in values.items()]
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("\n".join(["[General]", *lines, ""]), encoding="utf-8")


def appears(process):
    """Waits for the program of process to be on the bus with a window; returns it."""
    def shown():
        if process.poll() is not None:
            raise AssertionError(f"velm ended with status {process.returncode} at its start")
        found = application(process.pid)
        return found if found and found.childCount > 0 else None

    return until(shown, "the program's window")


def end(process):
    """Asks the program to end as a session does at its end; returns its status."""
    if process.poll() is None:
        process.terminate()
    return process.wait(PATIENCE_AT_END)


def end_again(process):
    """Asks once more, and gives it a moment; true once the program has ended."""
    process.terminate()
    try:
        process.wait(PAUSE_BETWEEN_REQUESTS)
    except subprocess.TimeoutExpired:
        return False
    return True
