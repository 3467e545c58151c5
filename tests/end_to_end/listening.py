# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""What a screen reader would say when the focus moves."""

import pyatspi
from gi.repository import GLib

from waiting import until

FOCUS_EVENT = "object:state-changed:focused"


class FocusListener:
    """Hears what gets the focus, from its creation until stop()."""

    def __init__(self):
        self._heard = []
        pyatspi.Registry.registerEventListener(self._hear, FOCUS_EVENT)

    def stop(self):
        """Hears nothing more."""
        pyatspi.Registry.deregisterEventListener(self._hear, FOCUS_EVENT)

    def after(self, deed):
        """Does deed and returns what has the focus then."""
        self._take()
        self._heard.clear()
        deed()
        until(self._take, "a move of the focus")
        return self._heard[-1]

    def _take(self):
        context = GLib.MainContext.default()
        while context.pending():
            context.iteration(False)
        return self._heard

    def _hear(self, event):
        if event.detail1:
            self._heard.append(event.source)
