"""The program's window, by the names that its controls have for assistive technology."""

import pyatspi

import keyboard
from accessible import act, find, has, text
from grid import Grid
from waiting import until, until_equal

# A label, a box around controls and an entry of a menu may bear the name of a control.
CONTROLS = {pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_TEXT, pyatspi.ROLE_CHECK_BOX,
            pyatspi.ROLE_RADIO_BUTTON, pyatspi.ROLE_PAGE_TAB, pyatspi.ROLE_TABLE,
            pyatspi.ROLE_LIST}
OPERATIONS = ("Read", "Verify", "Write", "Logic test")


class Window:
    """A window of the program and what can be seen and done in it."""

    def __init__(self, node):
        self.node = node
        self._controls = {}

    def control(self, name):
        """The control called \\a name, once it is there."""
        if name not in self._controls:
            self._controls[name] = until(lambda: find(self.node, name, CONTROLS),
                                         f"a control called {name!r}")
        return self._controls[name]

    def press(self, name):
        """Presses a button, or chooses a tab, as soon as it is on."""
        self.wait_enabled(name)
        act(self.control(name), "Press")

    def switch(self, name, on=True):
        """Brings a check box or a radio button into the state \\a on."""
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
        control = self.control(name)
        control.queryComponent().grabFocus()
        until(lambda: has(control, pyatspi.STATE_FOCUSED), f"the focus on {name!r}")

    def type(self, name, value):
        """Replaces the text of a field at the keyboard, and enters it."""
        self.focus(name)
        self.fill(name, "")
        keyboard.write(value)
        until_equal(lambda: self.text(name), value, f"what was typed into {name!r}")
        keyboard.press("Return")


class MainWindow(Window):
    """The main window."""

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
        above = table.parent[table.getIndexInParent() - 1]
        assert above.getRole() == pyatspi.ROLE_LABEL, above
        return above.name

    def show(self, tab):
        """Chooses a tab."""
        self.press(tab)
        until(lambda: has(self.control(tab), pyatspi.STATE_SELECTED) or
              self.heading().startswith(tab), f"tab {tab!r} to be chosen")

    def operate(self, operation, status=0):
        """Presses an operation's button and waits for its end; returns what the console got."""
        before = self.console()
        ending = f"minipro has exited with status {status}"
        self.press(operation)
        until(lambda: len(self.console()) > len(before) and self.console().endswith(ending),
              f"{ending!r} at the end of the console")
        self.wait_enabled(operation)
        return self.console()[len(before):]
