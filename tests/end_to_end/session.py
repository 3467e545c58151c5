# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""A display and a session bus of their own around one group of scenarios.

Nothing of the session of whoever starts the tests is touched: no window opens on their screen, and
their bus does not hear of the program.
"""

import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

SCREEN = "1280x900x24"
SKIPPED = 77
# What would send the program, or the buses, to the session of whoever runs the tests, or make Qt
# take file panels from a desktop.
FOREIGN = ("DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "WAYLAND_DISPLAY", "XAUTHORITY",
           "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE",
           "QT_ACCESSIBILITY", "NO_AT_BRIDGE", "MINIPRO_SIM_FAULT", "LANGUAGE")


def start_display(folder):
    """Starts Xvfb with its picture kept as a file in folder; returns the process and its name.

    The display chooses a free number itself and says it when it is ready.
    """
    reading, writing = os.pipe()
    display = subprocess.Popen(
        ["Xvfb", "-displayfd", str(writing), "-screen", "0", SCREEN, "-nolisten", "tcp", "-noreset",
         "-fbdir", str(folder)],
        pass_fds=[writing], stderr=subprocess.DEVNULL)
    os.close(writing)
    with os.fdopen(reading) as pipe:
        number = pipe.readline().strip()
    if not number:
        print(f"Skipped: Xvfb does not start here (it ended with status {display.wait()}).")
        sys.exit(SKIPPED)
    return display, f":{number}"


def environment(folder, display, prefix, output):
    """The environment of the session: what a login would set, and where the scenarios work."""
    runtime = folder / "runtime"
    runtime.mkdir(mode=0o700)
    home = folder / "home"
    home.mkdir()
    result = {key: value for key, value in os.environ.items() if key not in FOREIGN}
    result.update(
        DISPLAY=display, HOME=str(home), XDG_RUNTIME_DIR=str(runtime), LC_ALL="C.UTF-8",
        SHELL="/bin/sh", QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
        VELM_SCREEN=str(folder / "Xvfb_screen0"), VELM_FOLDER=str(folder),
        VELM_PREFIX=str(Path(prefix).resolve()), VELM_OUTPUT=str(Path(output).resolve()))
    return result


def main(group, prefix, output):
    """Runs the scenarios of group; returns their status."""
    # Short, since sockets are made in it, and outside the build folder, whose path may be long.
    folder = Path(tempfile.mkdtemp(prefix="velm-"))
    display = None
    try:
        display, name = start_display(folder)
        scenarios = Path(__file__).with_name("scenarios.py")
        return subprocess.run(
            ["dbus-run-session", "--", sys.executable, str(scenarios), group],
            env=environment(folder, name, prefix, output), check=False).returncode
    finally:
        if display:
            display.terminate()
            display.wait()
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
