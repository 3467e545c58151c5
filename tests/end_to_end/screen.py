# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""The display as X sees it: its picture, and which window has the keyboard.

There is no window manager here; the one thing that is missed of it, the keyboard for a window that
has just opened, is done by give_keyboard().
"""

import ctypes
import struct
import zlib
from contextlib import contextmanager
from pathlib import Path

CURRENT_TIME = 0
REVERT_TO_PARENT = 2
VIEWABLE = 2
ROOM = 256


class WindowAttributes(ctypes.Structure):
    """XWindowAttributes of Xlib, as far as this reads it, with room for the rest."""
    _fields_ = [
        ("x", ctypes.c_int), ("y", ctypes.c_int), ("width", ctypes.c_int),
        ("height", ctypes.c_int), ("border_width", ctypes.c_int), ("depth", ctypes.c_int),
        ("visual", ctypes.c_void_p), ("root", ctypes.c_ulong), ("class_", ctypes.c_int),
        ("bit_gravity", ctypes.c_int), ("win_gravity", ctypes.c_int),
        ("backing_store", ctypes.c_int), ("backing_planes", ctypes.c_ulong),
        ("backing_pixel", ctypes.c_ulong), ("save_under", ctypes.c_int),
        ("colormap", ctypes.c_ulong), ("map_installed", ctypes.c_int),
        ("map_state", ctypes.c_int), ("rest", ctypes.c_byte * ROOM)]


# Windows come and go while they are looked at, and what was asked of one that has gone is an
# error, for which Xlib would end the process.
ErrorHandler = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)
overlook = ErrorHandler(lambda display, error: 0)


@contextmanager
def connection():
    """Xlib and a connection of its own to the display."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XSetErrorHandler(overlook)
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XDefaultRootWindow.restype = ctypes.c_ulong
    display = ctypes.c_void_p(x11.XOpenDisplay(None))
    try:
        yield x11, display
    finally:
        x11.XCloseDisplay(display)


def seen_windows(x11, display):
    """The windows that can be seen, the lowest first."""
    root, parent = ctypes.c_ulong(), ctypes.c_ulong()
    children, count = ctypes.POINTER(ctypes.c_ulong)(), ctypes.c_uint()
    x11.XQueryTree(display, ctypes.c_ulong(x11.XDefaultRootWindow(display)), ctypes.byref(root),
                   ctypes.byref(parent), ctypes.byref(children), ctypes.byref(count))
    seen = []
    for index in range(count.value):
        attributes = WindowAttributes()
        known = x11.XGetWindowAttributes(display, ctypes.c_ulong(children[index]),
                                         ctypes.byref(attributes))
        if known and attributes.map_state == VIEWABLE:
            seen.append(children[index])
    return seen


def stack():
    """The windows on the display by their numbers, the lowest first."""
    with connection() as (x11, display):
        return seen_windows(x11, display)


def give_keyboard():
    """Gives the keyboard to the window on top; returns whether it has it."""
    with connection() as (x11, display):
        seen = seen_windows(x11, display)
        if not seen:
            return False
        x11.XSetInputFocus(display, ctypes.c_ulong(seen[-1]), REVERT_TO_PARENT,
                           ctypes.c_ulong(CURRENT_TIME))
        focused, revert = ctypes.c_ulong(), ctypes.c_int()
        x11.XGetInputFocus(display, ctypes.byref(focused), ctypes.byref(revert))
        return focused.value == seen[-1]


def png(width, height, rows):
    """A PNG file of rows, each width pixels of three bytes."""
    def chunk(kind, content):
        return (struct.pack(">I", len(content)) + kind + content +
                struct.pack(">I", zlib.crc32(kind + content)))

    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    pixels = zlib.compress(b"".join(b"\0" + row for row in rows), 6)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", pixels) +
            chunk(b"IEND", b""))


def save_picture(framebuffer, path):
    """Writes what the display shows, kept by Xvfb in file framebuffer as XWD, to path."""
    dump = Path(framebuffer).read_bytes()
    field = struct.unpack(">25I", dump[:100])
    header_size, width, height, line_bytes, colours = (
        field[0], field[4], field[5], field[12], field[19])
    start = header_size + colours * 12
    rows = []
    for y in range(height):
        line = dump[start + y * line_bytes:start + y * line_bytes + width * 4]
        row = bytearray(width * 3)
        row[0::3], row[1::3], row[2::3] = line[2::4], line[1::4], line[0::4]
        rows.append(bytes(row))
    Path(path).write_bytes(png(width, height, rows))
