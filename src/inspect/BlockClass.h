// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayView>

/// What a part of an image looks like.
enum class BlockClass {
    Blank, ///< every byte is 0xFF
    Zero,  ///< every byte is 0x00
    Text,  ///< nearly all that is no filling is ASCII text
    Code,  ///< anything else: code, tables, packed data
};

/// How many bytes of a part of an image are of which kind. Those of neighbours can be added.
struct ByteKinds {
    qint64 bytes = 0; ///< of any kind
    qint64 blank = 0; ///< 0xFF
    qint64 zero = 0;  ///< 0x00
    qint64 text = 0;  ///< ASCII that can be seen, blanks, tabs, line and page breaks

    ByteKinds &operator+=(const ByteKinds &other);
    friend bool operator==(const ByteKinds &, const ByteKinds &) = default;
};

ByteKinds kindsOf(QByteArrayView bytes);

/// The class of a part with \a kinds, which has at least one byte.
BlockClass classOf(const ByteKinds &kinds);
