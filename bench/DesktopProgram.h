#pragma once

#include "XDisplay.h"

#include "Stopwatch.h"

#include <functional>
#include <string>
#include <vector>

/// A program that was started on the X display, from its start on. It is ended with this object.
class DesktopProgram {
public:
    /// Starts \a words with \a folder as the home of its settings.
    DesktopProgram(XDisplay &display, const std::vector<std::string> &words,
                   const std::string &folder);
    DesktopProgram(const DesktopProgram &) = delete;
    DesktopProgram &operator=(const DesktopProgram &) = delete;
    ~DesktopProgram();

    /// Waits until a window of it is on the display and painted; gives the milliseconds from the
    /// start. Throws if none ever is.
    double untilFirstFrame();
    /// Waits until the middle of the window is full of text, as a page of a hex dump is; gives the
    /// milliseconds from the start. Throws if it never is.
    double untilPage();
    /// Milliseconds from a page key until other pixels are in the middle of the window; waits
    /// until nothing changes any more. Throws if the key does nothing.
    double pageDown();
    /// The memory that it has in use, in bytes.
    double memory() const;

    /// Gives the window the size that all programs are compared at, and clicks into it.
    void placeAndClick();
    /// Gives the window the keyboard.
    void focus() { display_.focus(window_); }
    /// Presses Control and \a key.
    void pressWithControl(xcb_keysym_t key) { display_.press(key, true); }
    /// Waits until the pixels of the window have not changed for a while.
    void settle();

private:
    PixelArea middle();
    double until(const std::string &what, const std::function<bool()> &condition) const;

    XDisplay &display_;
    Stopwatch sinceStart_;
    int pid_ = -1;
    xcb_window_t window_ = 0;
};
