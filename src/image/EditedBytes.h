// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "image/BlockChange.h"

#include <map>

/// Which bytes of an image have been edited: pieces of it, however long they are.
class EditedBytes {
public:
    /// \a change has been made.
    void note(const BlockChange &change);
    bool contains(qint64 offset) const;
    bool isEmpty() const { return ends_.empty(); }
    /// The ends of the pieces, which are apart from each other, by their offsets.
    const std::map<qint64, qint64> &ends() const { return ends_; }

private:
    void cutAt(qint64 offset);
    void moveFrom(qint64 offset, qint64 by);
    void add(ByteRange piece);

    std::map<qint64, qint64> ends_;
};
