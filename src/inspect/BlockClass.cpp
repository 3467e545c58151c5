// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "inspect/BlockClass.h"

#include "base/Units.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace {

/// A text has less filling than this many times itself.
constexpr qint64 maxFilling = 3;
/// Of so many bytes of a text, one may be something else.
constexpr qint64 textRun = 8;

/// A number of bytes that the compiler knows, so that it counts many at a time.
constexpr qsizetype countedLane = 16;
/// How often a count of one byte can be added to.
constexpr qsizetype lanesInTurn = maxByte;

using LaneCounts = std::array<quint8, countedLane>;

constexpr bool isTextByte(uchar byte) {
    const bool isVisible = uchar(byte - ' ') <= '~' - ' ';
    const bool isBreak = uchar(byte - '\t') <= '\r' - '\t';
    return isVisible | isBreak;
}

qint64 sumOf(const LaneCounts &counts) {
    return std::accumulate(counts.begin(), counts.end(), qint64(0));
}

/// The kinds of \a lanes times lane bytes, at most lanesInTurn of them.
ByteKinds kindsOfLanes(const uchar *next, qsizetype lanes) {
    LaneCounts blank{};
    LaneCounts zero{};
    LaneCounts text{};
    for (qsizetype turn = 0; turn < lanes; ++turn, next += countedLane)
        for (size_t i = 0; i < size_t(countedLane); ++i) {
            blank[i] = quint8(blank[i] + (next[i] == erasedByte));
            zero[i] = quint8(zero[i] + (next[i] == 0));
            text[i] = quint8(text[i] + isTextByte(next[i]));
        }
    return {lanes * countedLane, sumOf(blank), sumOf(zero), sumOf(text)};
}

ByteKinds kindsOfByte(uchar byte) {
    return {1, byte == erasedByte, byte == 0, isTextByte(byte)};
}

} // namespace

ByteKinds &ByteKinds::operator+=(const ByteKinds &other) {
    bytes += other.bytes;
    blank += other.blank;
    zero += other.zero;
    text += other.text;
    return *this;
}

ByteKinds kindsOf(QByteArrayView bytes) {
    const auto *next = reinterpret_cast<const uchar *>(bytes.data());
    const uchar *const end = next + bytes.size();
    ByteKinds kinds;
    while (end - next >= countedLane) {
        const qsizetype lanes = std::min<qsizetype>((end - next) / countedLane, lanesInTurn);
        kinds += kindsOfLanes(next, lanes);
        next += lanes * countedLane;
    }
    for (; next != end; ++next)
        kinds += kindsOfByte(*next);
    return kinds;
}

// A few characters in a field of filling are no text.
BlockClass classOf(const ByteKinds &kinds) {
    if (kinds.blank == kinds.bytes)
        return BlockClass::Blank;
    if (kinds.zero == kinds.bytes)
        return BlockClass::Zero;
    const qint64 filling = kinds.blank + kinds.zero;
    const qint64 content = kinds.bytes - filling;
    const qint64 others = content - kinds.text;
    return filling <= maxFilling * content && textRun * others <= content ? BlockClass::Text
                                                                          : BlockClass::Code;
}
