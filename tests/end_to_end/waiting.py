# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""Waiting for what a user would wait for: something to be seen, never a time to pass."""

import time

from gi.repository import GLib

# Far beyond what anything takes, for machines under load and programs under a sanitizer.
PATIENCE = 20.0
PAUSE = 0.01


class NotSeen(AssertionError):
    """What was waited for did not come."""


def until(condition, what, patience=PATIENCE):
    """Returns the first true value that condition gives; NotSeen, naming what, after
    patience seconds.

    A condition may look at something that is not there yet, or that goes while it is looked at:
    the bus then raises an error, which counts as a no.
    """
    deadline = time.monotonic() + patience
    while True:
        trouble = ""
        try:
            value = condition()
            if value:
                return value
        except (GLib.Error, LookupError, NotImplementedError, AttributeError) as error:
            trouble = f" ({type(error).__name__}: {error})"
        if time.monotonic() > deadline:
            raise NotSeen(f"not seen within {patience:g} s: {what}{trouble}")
        time.sleep(PAUSE)


def until_equal(read, expected, what):
    """Waits until read gives expected; NotSeen shows what it gave last."""
    last = [None]

    def matches():
        last[0] = read()
        return last[0] == expected

    try:
        until(matches, what)
    except NotSeen as trouble:
        raise NotSeen(f"{trouble}\n  expected {expected!r}\n  seen     {last[0]!r}") from None
