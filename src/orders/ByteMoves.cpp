// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "orders/ByteMoves.h"

#include "base/WordAt.h"

#include <array>
#include <cstring>

namespace {

template <typename Word>
void putWord(char *bytes, Word word) {
    std::memcpy(bytes, &word, sizeof word);
}

/// Applies \a change to all of \a bytes, eight at a time. The rest is done as eight that end in
/// zeros, so \a change must not move bytes out of the groups that \a size is a multiple of.
template <typename Change>
void changeAll(char *bytes, qsizetype size, Change change) {
    constexpr qsizetype step = sizeof(quint64);
    qsizetype at = 0;
    for (; size - at >= step; at += step)
        putWord(bytes + at, change(wordAt<quint64>(bytes + at)));
    std::array<char, step> rest{};
    std::memcpy(rest.data(), bytes + at, std::size_t(size - at));
    putWord(rest.data(), change(wordAt<quint64>(rest.data())));
    std::memcpy(bytes + at, rest.data(), std::size_t(size - at));
}

/// Exchanges the bits of \a word that are in \a lower with those \a shift places higher.
constexpr quint64 exchanged(quint64 word, quint64 lower, int shift) {
    return (word & lower) << shift | (word >> shift & lower);
}

constexpr quint64 neighbours(quint64 word) {
    return exchanged(word, 0x00FF00FF00FF00FF, 8);
}

constexpr quint64 turnedFours(quint64 word) {
    return exchanged(neighbours(word), 0x0000FFFF0000FFFF, 16);
}

constexpr quint64 turnedBits(quint64 word) {
    word = exchanged(word, 0x5555555555555555, 1);
    word = exchanged(word, 0x3333333333333333, 2);
    return exchanged(word, 0x0F0F0F0F0F0F0F0F, 4);
}

/// Copies \a count units that lie \a Parts units apart at \a from to where they follow each other.
template <typename Unit, int Parts>
void gather(char *to, const char *from, qsizetype count) {
    for (qsizetype i = 0; i < count; ++i)
        putWord(to + i * qsizetype(sizeof(Unit)),
                wordAt<Unit>(from + i * Parts * qsizetype(sizeof(Unit))));
}

template <typename Unit, int Parts>
void scatter(char *to, const char *from, qsizetype count) {
    for (qsizetype i = 0; i < count; ++i)
        putWord(to + i * Parts * qsizetype(sizeof(Unit)),
                wordAt<Unit>(from + i * qsizetype(sizeof(Unit))));
}

using Move = void (*)(char *to, const char *from, qsizetype count);

/// The one of four moves, each compiled for its lanes, that \a lanes ask for.
Move chosen(const Lanes &lanes, Move two, Move four, Move twoWide, Move fourWide) {
    if (lanes.unit == 1)
        return lanes.parts == 2 ? two : four;
    return lanes.parts == 2 ? twoWide : fourWide;
}

} // namespace

void swapBytes(char *bytes, qsizetype size, int group) {
    if (group == 2)
        changeAll(bytes, size, neighbours);
    else if (group == 4)
        changeAll(bytes, size, turnedFours);
}

void reverseBits(char *bytes, qsizetype size) {
    changeAll(bytes, size, turnedBits);
}

void takePart(char *to, QByteArrayView whole, const Lanes &lanes, int part) {
    if (lanes.parts == 1) {
        std::memcpy(to, whole.data(), std::size_t(whole.size()));
        return;
    }
    const Move move =
        chosen(lanes, gather<quint8, 2>, gather<quint8, 4>, gather<quint16, 2>, gather<quint16, 4>);
    move(to, whole.data() + qsizetype(part) * lanes.unit, whole.size() / lanes.word());
}

void putPart(char *whole, QByteArrayView from, const Lanes &lanes, int part) {
    if (lanes.parts == 1) {
        std::memcpy(whole, from.data(), std::size_t(from.size()));
        return;
    }
    const Move move = chosen(lanes, scatter<quint8, 2>, scatter<quint8, 4>, scatter<quint16, 2>,
                             scatter<quint16, 4>);
    move(whole + qsizetype(part) * lanes.unit, from.data(), from.size() / lanes.unit);
}
