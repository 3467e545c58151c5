// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Utf8.h"

#include <QByteArrayView>
#include <QString>

/// Turns the bytes of one stream into text, piece by piece. A character split between two pieces
/// is put together; what is not UTF-8 becomes U+FFFD, one for each longest run of bytes that
/// begins a character and cannot go on. A byte-order mark is a character like any other.
class OutputDecoder {
public:
    /// The text that \a bytes complete; the beginning of a character at the end is kept.
    QString decode(QByteArrayView bytes);
    /// The stream's end: U+FFFD for the beginning of a character that was kept, else nothing.
    QString flush();

private:
    void decodeByte(uchar byte, QString &text);
    void startCharacter(uchar byte, QString &text);
    void replaceBroken(QString &text);

    char32_t character_ = 0;
    /// Continuation bytes that are still to come.
    int missing_ = 0;
    /// The range that the next continuation byte must lie in; narrower than 80..BF behind the
    /// leads whose full range would be overlong, a surrogate or beyond the last character.
    uchar lowest_ = utf8::firstContinuation;
    uchar highest_ = utf8::lastContinuation;
};
