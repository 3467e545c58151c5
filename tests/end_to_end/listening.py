# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""What a screen reader would say: what the focus moves to, and notifications."""

import pyatspi
from gi.repository import GLib

from waiting import until

FOCUS_EVENT = "object:state-changed:focused"
SHOWING_EVENT = "object:state-changed:showing"


class Listener:
    """Hears the events of one kind, from its creation until stop()."""

    def __init__(self, kind):
        self._heard = []
        self._kind = kind
        pyatspi.Registry.registerEventListener(self._hear, kind)

    def stop(self):
        """Hears nothing more."""
        pyatspi.Registry.deregisterEventListener(self._hear, self._kind)

    def _take(self):
        context = GLib.MainContext.default()
        while context.pending():
            context.iteration(False)
        return self._heard

    def _hear(self, event):
        raise NotImplementedError


class FocusListener(Listener):
    """Hears what gets the focus."""

    def __init__(self):
        super().__init__(FOCUS_EVENT)

    def after(self, deed):
        """Does deed and returns what has the focus then."""
        self._take()
        self._heard.clear()
        deed()
        until(self._take, "a move of the focus")
        return self._heard[-1]

    def heard(self):
        """What has got the focus, in the order in which it did."""
        return list(self._take())

    def _hear(self, event):
        if event.detail1:
            self._heard.append(event.source)


class NotificationListener(Listener):
    """Hears the notifications that come up: a screen reader speaks them wherever the focus is."""

    def __init__(self):
        super().__init__(SHOWING_EVENT)

    def heard(self):
        """The words of all that have come up, the oldest first."""
        return list(self._take())

    def _hear(self, event):
        if event.detail1 and event.source.getRole() == pyatspi.ROLE_NOTIFICATION:
            self._heard.append(event.source.name)
