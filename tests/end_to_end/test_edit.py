# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""Changing bytes by hand."""

import keyboard
from case import Scenario
from grid import CHARACTERS
from listening import FocusListener
from waiting import until, until_equal

IMAGE = b"The quick brown fox jumps over the lazy dog.\n"


class Edit(Scenario):
    """An opened binary of some rows, edited in the table."""

    def setUp(self):
        super().setUp()
        binary = self.home.folder / "rom.bin"
        binary.write_bytes(IMAGE)
        self.configure(binary=binary)
        self.window = self.start()
        self.window.show("Data to burn")
        self.see_image(self.window, IMAGE)

    def see(self, image):
        """The table shows image, and the file for the tool holds it."""
        self.see_image(self.window, image)
        self.assert_same_bytes(self.home.image(), image)

    def enter(self, row, column, entry):
        """Opens a cell by its accessible action, and types entry."""
        self.window.grid.open_cell(row, column)
        keyboard.write(entry)
        keyboard.press("Return")

    def test_a_hexadecimal_entry_changes_its_byte(self):
        self.enter(1, 1, "7f")
        self.see(IMAGE[:16] + b"\x7f" + IMAGE[17:])
        self.finish_giving_up_edits(self.window)

    def test_a_quoted_text_changes_the_bytes_from_its_cell_on(self):
        self.enter(0, 5, "'QUICK'")
        self.see(IMAGE.replace(b"quick", b"QUICK"))
        self.assertEqual(self.window.grid.at(0, CHARACTERS).name, "The QUICK brown ")
        self.finish_giving_up_edits(self.window)

    def test_zero_is_refused(self):
        self.enter(0, 1, "00")
        # Keys are handled in their order: once the second byte has changed, the refusal is over.
        keyboard.press("Escape")
        self.enter(0, 2, "48")
        self.see(b"TH" + IMAGE[2:])
        self.finish_giving_up_edits(self.window)

    def test_escape_leaves_the_byte_as_it_was(self):
        self.window.grid.open_cell(0, 1)
        keyboard.write("41")
        keyboard.press("Escape")
        self.enter(0, 2, "48")
        self.see(b"TH" + IMAGE[2:])
        self.finish_giving_up_edits(self.window)

    def test_bytes_can_be_typed_one_after_the_other(self):
        self.window.focus("Bytes")
        self.window.grid.at(0, 1).queryComponent().grabFocus()
        for entry in ("41", "42", "43"):
            keyboard.write(entry)
            keyboard.press("Return")
        self.see(b"ABC" + IMAGE[3:])
        self.finish_giving_up_edits(self.window)

    def test_two_digits_move_on(self):
        self.window.focus("Bytes")
        self.window.grid.at(0, 1).queryComponent().grabFocus()
        keyboard.write("414243")
        self.see(b"ABC" + IMAGE[3:])
        self.finish_giving_up_edits(self.window)

    def test_the_cell_is_told_when_the_table_gets_the_focus(self):
        self.window.grid.at(1, 3).queryComponent().grabFocus()
        self.window.focus("Device")
        listener = FocusListener()
        self.addCleanup(listener.stop)
        self.window.focus("Bytes")
        # The table itself is told first.
        until_equal(lambda: [each.name for each in listener.heard()][-1:], [f"{IMAGE[18]:02X}"],
                    "what was told last")
        self.finish(self.window)

    def test_what_was_read_cannot_be_edited(self):
        self.window.operate("Read")
        self.window.show("Data read from chip")
        until_equal(self.window.grid.rows, 4097, "the number of rows")
        cell = self.window.grid.at(0, 1)
        before = cell.name
        with self.assertRaises(AssertionError):
            self.window.grid.open_cell(0, 1)
        self.window.focus("Bytes")
        cell.queryComponent().grabFocus()
        keyboard.write("41")
        keyboard.press("Return")
        # What is pressed last has come when this is seen, and so has what was pressed before.
        keyboard.press("Down")
        until(lambda: "at 0010:" in self.window.text("Facts"), "the cursor in the next row")
        self.window.show("Data to burn")
        self.see(IMAGE)
        self.window.show("Data read from chip")
        until_equal(lambda: self.window.grid.at(0, 1).name, before, "the byte that was read")
        self.finish(self.window)
