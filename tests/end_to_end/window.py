# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""The program's window, by the names that its controls have for assistive technology."""

import pyatspi
from gi.repository import GLib

import keyboard
import screen
from accessible import act, find, has, text
from grid import Grid
from listening import FocusListener
from waiting import until, until_equal

# A label, a box around controls and an entry of a menu may bear the name of a control. A button
# with a menu has a role of its own in newer versions of the toolkit.
CONTROLS = {pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_PUSH_BUTTON_MENU, pyatspi.ROLE_TEXT,
            pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_RADIO_BUTTON, pyatspi.ROLE_PAGE_TAB,
            pyatspi.ROLE_TABLE, pyatspi.ROLE_LIST, pyatspi.ROLE_SLIDER}
# More than any window has stations.
MOST_TABS = 40


class Window:
    """A window of the program and what can be seen and done in it."""

    def __init__(self, node):
        self.node = node
        self._controls = {}

    def control(self, name):
        """The control called name, once it is there."""
        if name not in self._controls:
            self._controls[name] = until(lambda: find(self.node, name, CONTROLS),
                                         f"a control called {name!r}")
        return self._controls[name]

    def press(self, name):
        """Presses a button, or chooses a tab, as soon as it is on."""
        self.wait_enabled(name)
        act(self.control(name), "Press")

    def switch(self, name, on=True):
        """Brings a check box or a radio button into the state on."""
        if self.is_on(name) != on:
            act(self.control(name), "Toggle")
        until_equal(lambda: self.is_on(name), on, f"the state of {name!r}")

    def is_on(self, name):
        """True for a check box or a radio button that is checked."""
        return has(self.control(name), pyatspi.STATE_CHECKED)

    def is_enabled(self, name):
        """True for a control that can be used."""
        return has(self.control(name), pyatspi.STATE_ENABLED)

    def wait_enabled(self, name):
        """Waits until a control can be used."""
        until(lambda: self.is_enabled(name), f"{name!r} to be on")

    def text(self, name):
        """The text of a field or a text view."""
        return text(self.control(name))

    def fill(self, name, value):
        """Replaces the text of a field, as assistive technology does."""
        self.control(name).queryEditableText().setTextContents(value)
        until_equal(lambda: self.text(name), value, f"the text of {name!r}")

    def focus(self, name):
        """Gives the keyboard to a control."""
        until(screen.give_keyboard, "the keyboard in the window on top")
        control = self.control(name)
        control.queryComponent().grabFocus()
        until(lambda: has(control, pyatspi.STATE_FOCUSED), f"the focus on {name!r}")

    def tab_to(self, name):
        """Leads the keyboard to a control by the tabulator."""
        listener = FocusListener()
        for _ in range(MOST_TABS):
            if has(self.control(name), pyatspi.STATE_FOCUSED):
                break
            listener.after(lambda: keyboard.press("Tab"))
        listener.stop()
        until(lambda: has(self.control(name), pyatspi.STATE_FOCUSED), f"the focus on {name!r}")

    def type(self, name, value):
        """Replaces the text of a field at the keyboard, and enters it."""
        self.focus(name)
        self.fill(name, "")
        keyboard.write(value)
        until_equal(lambda: self.text(name), value, f"what was typed into {name!r}")
        keyboard.press("Return")


class Dialog(Window):
    """A dialog on the main window."""

    def close(self, button):
        """Presses button and waits until the dialog is gone."""
        self.press(button)
        self.wait_closed()

    def wait_closed(self):
        """Waits until the dialog is gone."""
        until(lambda: not self.is_open(), "the end of the dialog")

    def is_open(self):
        """False once the dialog is hidden or has ceased to be."""
        try:
            return has(self.node, pyatspi.STATE_SHOWING)
        except GLib.Error:
            return False

    def give_path(self, path, button):
        """Fills in a file panel and confirms it."""
        self.fill("File name:", str(path))
        self.close(button)


class MainWindow(Window):
    """The main window."""

    def __init__(self, application):
        super().__init__(application[0])
        self.application = application

    @property
    def grid(self):
        """The table of bytes and results."""
        return Grid(self.control("Bytes"))

    def console(self):
        """The text of the console."""
        return self.text("Console")

    def message(self):
        """What the message line says."""
        return self.text("Message")

    def heading(self):
        """The text of the label right above the table."""
        table = self.control("Bytes")
        siblings = [table.parent[index] for index in range(table.getIndexInParent())]
        labels = [each for each in siblings if each.getRole() == pyatspi.ROLE_LABEL]
        return [each.name for each in labels if has(each, pyatspi.STATE_SHOWING)][-1]

    def show(self, tab):
        """Chooses a tab."""
        self.press(tab)
        tabs = self.control(tab).parent
        until_equal(lambda: tabs.name, tab, "the tab that is chosen")

    def dialog(self, title):
        """The dialog called title, once it is open."""
        def opened():
            found = find(self.application, title, {pyatspi.ROLE_DIALOG})
            return found if has(found, pyatspi.STATE_SHOWING) else None

        return Dialog(until(opened, f"a dialog called {title!r}"))

    def operate(self, operation, status=0):
        """Presses an operation's button and waits for its end; returns what the console got."""
        before = self.console()
        ending = f"minipro has exited with status {status}"
        self.press(operation)
        until(lambda: len(self.console()) > len(before) and self.console().endswith(ending),
              f"{ending!r} at the end of the console")
        self.wait_enabled(operation)
        return self.console()[len(before):]
