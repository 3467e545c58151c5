# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""Keys as a user presses them, by way of the accessibility bus."""

import pyatspi

KEYS = {"Return": 0xFF0D, "Escape": 0xFF1B, "Tab": 0xFF09, "Down": 0xFF54, "Home": 0xFF50,
        "Delete": 0xFFFF, "F2": 0xFFBF, "Space": 0x20}


def press(*names):
    """Presses the keys called names, one after the other."""
    for name in names:
        pyatspi.Registry.generateKeyboardEvent(KEYS[name], None, pyatspi.KEY_SYM)


def write(characters):
    """Types characters, which are of ASCII."""
    for character in characters:
        pyatspi.Registry.generateKeyboardEvent(ord(character), None, pyatspi.KEY_SYM)
