// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"
#include "files/ByteBuffer.h"
#include "imageviews/KnownImage.h"
#include "inspect/ImageFacts.h"
#include "inspect/Sha256.h"

#include <QString>

#include <optional>

/// An image as the window shows it.
struct ShownImage {
    ByteBuffer bytes;        ///< may be null
    quint64 revision = 0;    ///< other numbers for other states of one buffer
    bool isRead = false;     ///< it was read from a chip
    QString origin;          ///< whose bytes they are, in words
    QString comparison = {}; ///< how they differ from the other image, in words
};

/// Reads the facts of the image that is shown, and its SHA-256 if that is asked for, in turns of
/// less than a frame. It keeps no image alive.
class ShownImageReader {
public:
    /// Bytes that a turn reads for the SHA-256: some milliseconds' work.
    static constexpr qsizetype maxSha256InTurn = mebibyte;

    /// Takes a turn at \a image, from its beginning if it is not the one of the turn before; what
    /// was known and asked of that is forgotten then. True while there is more to read.
    bool readOn(const ShownImage &image);

    /// The facts of the image; nothing until they are known.
    std::optional<ImageFacts> facts() const;

    /// Lets the turns at \a image that follow read its SHA-256 as well, from the beginning.
    void askForSha256(const ShownImage &image);
    /// True while the SHA-256 is asked for and not known yet.
    bool isReadingSha256() const { return reader_ && sha256_.isEmpty(); }
    /// 64 hexadecimal digits; empty unless asked for and known.
    QString sha256() const { return sha256_; }

private:
    bool isTheSame(const ShownImage &image) const;
    void beginWith(const ShownImage &image);

    KnownImage known_;
    ImageFactsReader facts_;
    bool factsAreKnown_ = false;
    std::optional<Sha256Reader> reader_;
    QString sha256_;
};
