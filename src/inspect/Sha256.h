// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayView>
#include <QCryptographicHash>

/// Reads the SHA-256 of an image in as many turns as the caller likes, as ImageFactsReader does
/// its facts.
class Sha256Reader {
public:
    /// Reads on through \a image, which must have the same bytes at each call, at most \a max of
    /// them. True once all have been read.
    bool advance(QByteArrayView image, qsizetype max);
    /// The digest of the bytes that have been read: 32 bytes.
    QByteArray digest() const { return hash_.result(); }

private:
    QCryptographicHash hash_{QCryptographicHash::Sha256};
    qsizetype read_ = 0;
};
