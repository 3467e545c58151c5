// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

/// What tells one image from another at a glance.
struct ImageFacts {
    qint64 size = 0;   ///< in bytes
    quint32 crc32 = 0; ///< as zlib and PNG count it; 0 for no bytes
    quint16 sum = 0;   ///< of all bytes, modulo 65,536
    /// The value of every byte, if all are the same; none for no bytes.
    std::optional<quint8> onlyByte;

    friend bool operator==(const ImageFacts &, const ImageFacts &) = default;
};

/// Reads the facts of an image in turns, between which the caller may do something else.
class ImageFactsReader {
public:
    /// Reads on through \a image, which must have the same bytes at each call, at most \a max of
    /// them. True once all have been read.
    bool advance(QByteArrayView image, qsizetype max);
    /// The facts of the bytes that have been read.
    const ImageFacts &facts() const { return facts_; }

private:
    void take(QByteArrayView bytes);

    ImageFacts facts_;
};

/// A CRC-32 as it is written: eight hexadecimal digits.
QString crc32Digits(quint32 crc32);
