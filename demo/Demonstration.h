#pragma once

#include "app/VelmWindow.h"

#include <QString>

class QAbstractButton;
class QLineEdit;

/// Drives the real window as a user would, by mouse and keyboard events on its controls, and
/// tells on standard output what came of it.
class Demonstration {
public:
    explicit Demonstration(VelmWindow &velm);

    /// Reads the chip, composes the image from what was read, writes it and verifies it. True if
    /// each of these steps did what it should.
    bool readComposeWriteVerify();
    /// Saves a picture of the window as a PNG file; false if it cannot be written.
    bool savePicture(const QString &path);

private:
    bool operation(QAbstractButton *button, const QString &name);
    void press(QAbstractButton *button);
    void type(QLineEdit *field, const QString &text);
    void settle();
    bool report(bool good, const QString &what);

    VelmWindow &m_velm;
};
