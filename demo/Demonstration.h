// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "app/VelmWindow.h"

#include <QString>

#include <functional>

class QAbstractButton;
class QLineEdit;

/// Drives the real window by its controls, as a user would, and tells on standard output what came
/// of it.
class Demonstration {
public:
    explicit Demonstration(VelmWindow &velm);

    /// Reads the chip, composes the image from what was read, writes it and verifies it. True if
    /// each of these steps did what it should.
    bool readComposeWriteVerify();
    /// The steps of it, each true if it went as it should.
    bool read();
    bool composeFromRead();
    bool writeAndVerify();
    /// Saves a picture of the window as a PNG file; false if it cannot be written.
    bool savePicture(const QString &path);

    /// Presses a button with the mouse.
    void press(QAbstractButton *button);
    /// Puts \a text in place of what \a field holds, and leaves the field.
    void type(QLineEdit *field, const QString &text);
    /// Chooses the entry of the menu bar with \a text, without its marks.
    void choose(const QString &text);
    /// Lets everything happen that waits for the event loop.
    void settle();
    /// Lets the event loop turn until \a happened; false if it has not within ten seconds.
    bool waitUntil(const std::function<bool()> &happened);

private:
    bool operation(QAbstractButton *button, const QString &name);
    bool report(bool good, const QString &what);

    VelmWindow &velm_;
};
