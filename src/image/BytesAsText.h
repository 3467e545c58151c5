// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayView>
#include <QString>

/// A way to write bytes down for people and other programs.
enum class ByteNotation {
    Hexadecimal, ///< two digits a byte, with blanks between them
    CArray,      ///< the definition of an array in C; empty for no bytes, which C has none for
    PythonBytes, ///< a literal in Python
    Characters,  ///< one of ISO 8859-1 a byte, with blanks for control characters
};

/// The two upper-case digits of \a byte.
const QString &byteDigits(quint8 byte);

/// \a bytes in \a notation, sixteen in a line where it has lines. The last line has no end.
QString bytesAsText(QByteArrayView bytes, ByteNotation notation);
