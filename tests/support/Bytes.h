// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"

#include <QStringList>

/// A new buffer of the bytes spelt in hexadecimal, blanks allowed: bufferOf("AA FF").
inline ByteBuffer bufferOf(const QByteArray &hex) {
    return std::make_shared<QByteArray>(QByteArray::fromHex(hex));
}

/// The bytes of \a buffer as a picture: "AA FF"; runs of more than eight equal bytes as
/// "FF*1004"; "absent" for a null buffer.
inline QString pictureOf(const ByteBuffer &buffer) {
    constexpr qsizetype longestSpeltRun = 8;
    if (!buffer)
        return QStringLiteral("absent");
    const QByteArray &bytes = *buffer;
    QStringList parts;
    for (qsizetype at = 0; at < bytes.size();) {
        qsizetype end = at + 1;
        while (end < bytes.size() && bytes.at(end) == bytes.at(at))
            ++end;
        const QString byte = QString::fromLatin1(bytes.sliced(at, 1).toHex().toUpper());
        if (end - at > longestSpeltRun)
            parts.append(QStringLiteral("%1*%2").arg(byte).arg(end - at));
        else
            parts.append(QStringList(end - at, byte));
        at = end;
    }
    return parts.join(u' ');
}
