// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <vector>

/// A rectangle of a window, in pixels.
struct PixelArea {
    int16_t x = 0;
    int16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;
};

/// Looks at an X display as a user does: which window is there, which pixels it has; and presses
/// keys. It knows nothing of the programs, so that one measure fits them all. There is no window
/// manager on the display, and one program at a time.
class XDisplay {
public:
    /// Connects to $DISPLAY. Throws if that fails.
    XDisplay();
    XDisplay(const XDisplay &) = delete;
    XDisplay &operator=(const XDisplay &) = delete;
    ~XDisplay();

    /// The program window that is on the display, if there is one by now.
    std::optional<xcb_window_t> programWindow();
    /// The place and size of \a window; empty if it has gone.
    PixelArea geometry(xcb_window_t window);
    /// The pixels of the \a wanted area of \a window, as far as it is on the display; none if the
    /// window has gone.
    std::vector<uint32_t> pixels(xcb_window_t window, const PixelArea &wanted);

    /// Moves \a window to the corner and gives it a size.
    void place(xcb_window_t window, uint16_t width, uint16_t height);
    /// Gives \a window the keyboard.
    void focus(xcb_window_t window);
    /// Gives \a window the keyboard and clicks into its middle.
    void clickInto(xcb_window_t window);
    /// Presses and releases a key, the Control key held if \a withControl.
    void press(xcb_keysym_t key, bool withControl = false);

private:
    PixelArea onDisplay(xcb_window_t window, const PixelArea &area);
    bool isProgramWindow(xcb_window_t window);
    xcb_keycode_t codeOf(xcb_keysym_t key);
    void fake(uint8_t type, uint8_t detail, int16_t x = 0, int16_t y = 0);

    xcb_connection_t *connection_ = nullptr;
    xcb_window_t root_ = 0;
    int width_ = 0;
    int height_ = 0;
};
