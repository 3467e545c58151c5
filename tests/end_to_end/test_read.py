# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""Reading a chip."""

from case import DEVICE, Scenario
from grid import row_of_bytes
from listening import NotificationListener
from program import SIMULATOR
from waiting import until_equal

CHIP_SIZE = 65536
# Every row would take half a minute to ask for; a stride that is no power of two meets each kind.
STRIDE = 37


class Read(Scenario):
    """From the first start to the bytes of a chip."""

    def test_first_start_offers_an_empty_table(self):
        window = self.start()
        self.assertEqual(window.heading(), "Data read from chip:")
        self.assertEqual(window.grid.rows(), 1)
        self.assertEqual(window.grid.row(0), row_of_bytes(b"", 0))
        self.finish(window)

    def test_first_start_then_read_shows_every_byte_of_the_chip(self):
        window = self.start()
        window.type("Device", DEVICE)
        window.type("Programmer tool", str(SIMULATOR))
        window.operate("Read")
        chip = self.home.chip(DEVICE)
        self.assertEqual(len(chip), CHIP_SIZE)
        until_equal(window.grid.rows, CHIP_SIZE // 16 + 1, "the number of rows")
        last = CHIP_SIZE // 16
        for row in [*range(0, last, STRIDE), last - 1, last]:
            self.assertEqual(window.grid.row(row), row_of_bytes(chip, row))
        self.assertIn("65,536 bytes", window.message())
        self.finish(window)

    def test_the_map_says_where_the_view_is_and_leads_on(self):
        self.configure()
        window = self.start()
        window.operate("Read")
        view = window.control("Map")
        until_equal(lambda: view.description, "0x0000 of 0x10000, text", "what the map says")
        value = view.queryValue()
        self.assertEqual(value.currentValue, 0)
        value.currentValue = CHIP_SIZE // 2
        until_equal(lambda: value.currentValue, CHIP_SIZE // 2, "the value of the map")
        self.assertIn("0x8000 of 0x10000, ", view.description)
        self.assertGreater(value.maximumValue, CHIP_SIZE // 2)
        self.finish(window)

    def test_a_read_without_programmer_is_said_and_shows_nothing(self):
        self.configure()
        window = self.start(MINIPRO_SIM_FAULT="no-programmer")
        window.operate("Read", status=1)
        self.assertIn("Problem:", window.message())
        self.assertEqual(window.grid.row(0), row_of_bytes(b"", 0))
        self.finish(window)

    def test_each_verdict_is_spoken_once_and_whole(self):
        self.configure()
        window = self.start()
        listener = NotificationListener()
        self.addCleanup(listener.stop)
        verdicts = []
        for operation, status in [("Read", 0), ("Read", 0), ("Verify", 1)]:
            window.operate(operation, status)
            until_equal(lambda: len(listener.heard()), len(verdicts) + 1, "what is spoken")
            verdicts.append(window.message())
            self.assertEqual(listener.heard(), verdicts)
        self.assertEqual(verdicts[0], f"Done: Read succeeded. {CHIP_SIZE:,} bytes.")
        self.assertIn("Problem: Verify failed", verdicts[-1])
        self.finish(window)
