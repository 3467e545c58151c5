# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""Finding a device and keeping favourites."""

import pyatspi

import keyboard
from accessible import act, find, has
from case import DEVICE, Scenario
from listening import FocusListener
from waiting import until, until_equal

TERM = "24C02"


class Search(Scenario):
    """The panel that searches the tool's catalogue."""

    def setUp(self):
        super().setUp()
        self.configure()
        self.window = self.start()
        self.window.press("Search devices")
        self.panel = self.window.dialog("Search devices")

    def names(self):
        """The names in the list."""
        devices = self.panel.control("Devices")
        return [devices[index].name for index in range(devices.childCount)]

    def search(self, term):
        """Searches and returns what was found."""
        self.panel.fill("Search term", term)
        self.panel.press("Search")
        until(lambda: self.names() and self.panel.is_enabled("Devices"), "devices in the list")
        return self.names()

    def test_a_device_is_found_and_chosen_by_keyboard(self):
        until(lambda: has(self.panel.control("Search term"), pyatspi.STATE_FOCUSED),
              "the focus on the search term")
        keyboard.write(TERM)
        keyboard.press("Return")
        until(self.names, "devices in the list")
        names = self.names()
        self.assertTrue(all(TERM in name for name in names), names)
        self.panel.tab_to("Devices")
        keyboard.press("Home", *["Down"] * names.index(TERM))
        keyboard.press("Return")
        self.panel.wait_closed()
        until_equal(lambda: self.window.text("Device"), TERM, "the device")
        self.window.operate("Read")
        self.see_image(self.window, self.home.chip(TERM))
        self.finish(self.window)

    def test_a_device_is_found_and_chosen_by_assistive_technology(self):
        names = self.search(TERM)
        self.panel.control("Devices").queryTable().addRowSelection(names.index(TERM))
        self.panel.close("OK")
        until_equal(lambda: self.window.text("Device"), TERM, "the device")
        self.finish(self.window)

    def test_cancelling_keeps_the_device(self):
        names = self.search(TERM)
        self.panel.control("Devices").queryTable().addRowSelection(names.index(TERM))
        self.panel.close("Cancel")
        self.assertEqual(self.window.text("Device"), DEVICE)
        self.finish(self.window)


class Favourites(Scenario):
    """The menu of favourite devices."""

    def setUp(self):
        super().setUp()
        self.configure()
        self.window = self.start()
        self.listener = FocusListener()
        self.addCleanup(self.listener.stop)

    def menu(self):
        """Opens the menu, which puts the focus on its first entry; returns what its entries are
        called."""
        self.window.focus("Favourites")
        keyboard.press("Space")
        first = self.listener.after(lambda: keyboard.press("Down"))
        entries = first.parent
        return [entries[index].name for index in range(entries.childCount)]

    def choose(self, name):
        """Chooses name from the menu."""
        for _ in range(self.menu().index(name)):
            self.listener.after(lambda: keyboard.press("Down"))
        keyboard.press("Return")

    def say(self, button, sentence):
        """Presses button; the message line then says sentence."""
        self.window.press(button)
        until(lambda: sentence in self.window.message(), f"{sentence!r} in the message line")

    def test_a_device_is_added_picked_and_removed(self):
        self.window.fill("Device", "7400")
        self.say("Add to favourites", "7400 was added to the favourites.")
        self.assertEqual(self.menu(), [DEVICE, "7400"])
        keyboard.press("Escape")

        self.choose(DEVICE)
        until_equal(lambda: self.window.text("Device"), DEVICE, "the device")
        self.choose("7400")
        until_equal(lambda: self.window.text("Device"), "7400", "the device")

        self.say("Remove from favourites", "7400 was removed from the favourites.")
        self.assertEqual(self.menu(), [DEVICE])
        keyboard.press("Escape")
        self.finish(self.window)

    def entry(self, name):
        """The entry called name below the button, whose menu need not be open."""
        return until(lambda: find(self.window.control("Favourites"), name,
                                  {pyatspi.ROLE_MENU_ITEM}), f"a favourite called {name!r}")

    def test_a_favourite_is_picked_by_assistive_technology(self):
        self.window.fill("Device", "7400")
        self.say("Add to favourites", "7400 was added to the favourites.")
        act(self.entry(DEVICE), "Press")
        until_equal(lambda: self.window.text("Device"), DEVICE, "the device")
        act(self.entry("7400"), "Press")
        until_equal(lambda: self.window.text("Device"), "7400", "the device")
        self.finish(self.window)

    def test_the_menu_opens_by_assistive_technology(self):
        act(self.window.control("Favourites"), "ShowMenu")
        until(lambda: has(self.entry(DEVICE), pyatspi.STATE_SHOWING), "the open menu")
        keyboard.press("Escape")
        until(lambda: not has(self.entry(DEVICE), pyatspi.STATE_SHOWING), "the closed menu")
        self.finish(self.window)

    def test_a_favourite_is_not_added_twice(self):
        self.say("Add to favourites", f"{DEVICE} is a favourite already.")
        self.assertEqual(self.menu(), [DEVICE])
        keyboard.press("Escape")
        self.finish(self.window)

    def test_favourites_are_there_after_a_restart(self):
        self.window.fill("Device", "7400")
        self.say("Add to favourites", "7400 was added to the favourites.")
        self.finish(self.window)
        self.window = self.start()
        self.assertEqual(self.menu(), [DEVICE, "7400"])
        keyboard.press("Escape")
        self.finish(self.window)
