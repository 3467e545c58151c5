// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"

#include <QtGlobal>

#include <memory>

/// Which image something has been made from, and which state of it. It keeps no image alive.
class KnownImage {
public:
    /// None.
    KnownImage() = default;
    /// The state \a revision of \a bytes, which may be null.
    KnownImage(const ByteBuffer &bytes, quint64 revision) : bytes_(bytes), revision_(revision) {}

    /// True for the very image \a bytes, in whatever state.
    bool isOf(const ByteBuffer &bytes) const { return isSameBuffer(bytes, bytes_); }
    /// True for that image in the state \a revision.
    bool is(const ByteBuffer &bytes, quint64 revision) const {
        return revision_ == revision && isOf(bytes);
    }
    /// The image, in whatever state it is now; null once it has gone.
    ByteBuffer bytes() const { return bytes_.lock(); }

private:
    std::weak_ptr<QByteArray> bytes_;
    quint64 revision_ = 0;
};
