// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "instruments/XDisplay.h"

#include "instruments/Stopwatch.h"

#include <functional>
#include <string>
#include <vector>

/// How a program is started, and where in its window its page of bytes stands.
struct ProgramStart {
    std::vector<std::string> words;
    /// Where the looked-at part of the page begins, as a share of the window's width.
    double pageLeft = 0;
};

/// A program that was started on the X display, from its start on. It is ended with this object.
class DesktopProgram {
public:
    /// Starts it with \a folder as the home of its settings.
    DesktopProgram(XDisplay &display, const ProgramStart &start, const std::string &folder);
    DesktopProgram(const DesktopProgram &) = delete;
    DesktopProgram &operator=(const DesktopProgram &) = delete;
    ~DesktopProgram();

    /// Waits until a window of it is on the display and painted; gives the milliseconds from the
    /// start. Throws if none ever is.
    double untilFirstFrame();
    /// Waits until its page is full of text, as a page of a hex dump is; gives the milliseconds
    /// from the start. Throws if it never is.
    double untilPage();
    /// Milliseconds from a page key until there are other pixels in its page; waits until nothing
    /// changes any more. Throws if the key does nothing.
    double pageDown();
    /// The memory that it has in use, in bytes.
    double memory() const;

    /// Gives the window the size that all programs are compared at, and clicks into it.
    void placeAndClick();
    /// Gives the window the keyboard.
    void focus() { display_.focus(window_); }
    /// Presses Control and \a key.
    void pressWithControl(xcb_keysym_t key) { display_.press(key, true); }
    /// Waits until the pixels of its page have not changed for a while.
    void settle();

private:
    PixelArea page();
    double until(const std::string &what, const std::function<bool()> &condition) const;

    XDisplay &display_;
    Stopwatch sinceStart_;
    double pageLeft_ = 0;
    int pid_ = -1;
    xcb_window_t window_ = 0;
};
