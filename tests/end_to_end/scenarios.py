# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""Runs the scenarios of one group inside the session that session.py has made."""

import sys
import unittest

from gi.repository import Gio, GLib

SKIPPED = 77


def bus_trouble():
    """Why there is no accessibility bus in this session; empty if there is one."""
    try:
        Gio.bus_get_sync(Gio.BusType.SESSION).call_sync(
            "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
            Gio.DBusCallFlags.NONE, -1, None)
    except GLib.Error as error:
        return error.message
    return ""


def main(group):
    """Runs every scenario of test_group.py; returns 0 if all passed and there was one."""
    if trouble := bus_trouble():
        print(f"Skipped: the accessibility bus does not start here ({trouble}).")
        return SKIPPED
    suite = unittest.defaultTestLoader.loadTestsFromName(f"test_{group}")
    result = unittest.TextTestRunner(stream=sys.stdout, verbosity=2).run(suite)
    return 0 if result.wasSuccessful() and result.testsRun > 0 else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
