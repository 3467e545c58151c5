# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""Files in and out, through the program's own file panels."""

from case import DEVICE, Scenario
from waiting import until, until_equal

ROM = bytes(range(256)) * 2


class Files(Scenario):
    """Opening a binary and saving the images."""

    def setUp(self):
        super().setUp()
        self.configure()
        self.rom = self.home.folder / "my rom.bin"
        self.rom.write_bytes(ROM)
        self.window = self.start()

    def open_rom(self):
        """Opens the binary by the panel."""
        self.window.press("Open binary")
        self.window.dialog("Open binary").give_path(self.rom, "Open")
        until_equal(lambda: self.window.text("Opened binary"), str(self.rom), "the opened path")

    def save(self, button, name):
        """Saves by the panel behind button; returns the bytes of the file."""
        path = self.home.folder / name
        self.window.press(button)
        self.window.dialog("Save").give_path(path, "Save")
        until(lambda: f"Done: Saved {path}." in self.window.message(), "the file to be saved")
        return path.read_bytes()

    def test_an_opened_binary_stands_at_its_start_address(self):
        self.window.show("Data to burn")
        self.open_rom()
        self.see_image(self.window, ROM)
        self.window.type("Start address", "20")
        image = b"\xff" * 0x20 + ROM
        self.see_image(self.window, image)
        self.assert_same_bytes(self.home.image(), image)
        self.finish(self.window)

    def test_a_file_of_records_is_shown_before_its_bytes_are_taken(self):
        records = self.home.folder / "records.hex"
        records.write_text(":0200100041426B\n:00000001FF\n", encoding="ascii")
        self.home.open(records)
        dialog = self.window.dialog("Import records.hex")
        until(lambda: "Range: 0x0010 to 0x0011, 2 bytes" in dialog.text("What was found"),
              "what was found")
        self.assertEqual(self.window.text("Opened binary"), "")
        dialog.fill("Base offset", "10")
        dialog.close("Import")
        kept = self.home.folder / "data" / "velm" / "records.bin"
        until_equal(lambda: self.window.text("Opened binary"), str(kept), "the opened path")
        self.assert_same_bytes(self.home.image(), b"AB")
        self.finish(self.window)

    def test_cancelling_opens_nothing(self):
        self.window.press("Open binary")
        panel = self.window.dialog("Open binary")
        panel.fill("File name:", str(self.rom))
        panel.close("Cancel")
        self.assertEqual(self.window.text("Opened binary"), "")
        self.assert_same_bytes(self.home.image(), b"")
        self.finish(self.window)

    def test_both_images_are_saved_as_they_are_shown(self):
        self.open_rom()
        self.window.operate("Read")
        self.assert_same_bytes(self.save("Save data to burn", "burn.bin"), ROM)
        self.assert_same_bytes(self.save("Save data read from chip", "read.bin"),
                               self.home.chip(DEVICE))
        self.finish(self.window)

    def test_nothing_to_save_is_said_without_a_panel(self):
        self.window.press("Save data read from chip")
        until(lambda: "First read the chip" in self.window.message(), "the sentence")
        self.window.press("Save data to burn")
        until(lambda: "First create some data" in self.window.message(), "the sentence")
        self.assertEqual(self.window.application.childCount, 1)
        self.finish(self.window)
