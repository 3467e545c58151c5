// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <iterator>
#include <map>

/// Bytes at addresses, with gaps between them. Takes memory for the bytes and for each piece of
/// bytes that follow each other, none for the gaps.
class AddressedBytes {
public:
    /// Such pieces by the addresses of their first bytes. No two touch.
    using Pieces = std::map<qint64, QByteArray>;

    /// Puts \a bytes at \a address, which is not negative, and over what was there. True if
    /// something was.
    bool put(qint64 address, QByteArrayView bytes);

    const Pieces &pieces() const { return pieces_; }
    bool isEmpty() const { return pieces_.empty(); }
    /// How many bytes there are.
    qint64 count() const { return count_; }
    /// The lowest address with a byte; 0 if there is none.
    qint64 first() const { return isEmpty() ? 0 : pieces_.begin()->first; }
    /// The address behind the highest with a byte; 0 if there is none.
    qint64 end() const { return isEmpty() ? 0 : endOf(std::prev(pieces_.end())); }

private:
    using Piece = Pieces::iterator;

    static qint64 endOf(Pieces::const_iterator piece) {
        return piece->first + piece->second.size();
    }
    void fillGap(qint64 address, QByteArrayView bytes, Piece next);
    void join(Piece one, QByteArrayView between, Piece other);
    void prepend(Piece piece, QByteArrayView bytes);

    Pieces pieces_;
    qint64 count_ = 0;
};
