// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "base/Units.h"

#include <QString>

#include <array>
#include <cstddef>
#include <vector>

/// What bytes have to be like, one after the other, to be a hit. Of each byte some bits are asked
/// for; the others may be anything. A pattern without bytes hits nowhere.
class BytePattern {
public:
    /// A byte hits if it has \a value in the bits of \a mask.
    struct Byte {
        quint8 value = 0;
        quint8 mask = maxByte;

        bool hits(quint8 byte) const { return ((byte ^ value) & mask) == 0; }
        friend bool operator==(const Byte &, const Byte &) = default;
    };

    /// The longest that is searched for, in bytes.
    static constexpr qsizetype longest = 1024;

    BytePattern() = default;
    explicit BytePattern(std::vector<Byte> bytes);

    qsizetype size() const { return qsizetype(bytes_.size()); }
    bool isEmpty() const { return bytes_.empty(); }
    const Byte &operator[](qsizetype place) const { return bytes_[std::size_t(place)]; }

    /// True if the bytes from \a bytes on, at least size(), are a hit.
    bool hits(const uchar *bytes) const;

    /// The places of two bytes that are seldom hit by chance, for a quick look; the same twice if
    /// there is only one. There must be one.
    std::array<qsizetype, 2> telling() const { return telling_; }

    friend bool operator==(const BytePattern &one, const BytePattern &other) {
        return one.bytes_ == other.bytes_;
    }

private:
    std::vector<Byte> bytes_;
    std::array<qsizetype, 2> telling_{};
};

/// Why a text is no pattern.
struct PatternTrouble {
    enum class Kind {
        HalfByte, ///< a group of hexadecimal digits of an odd number
        NoDigits, ///< a group with something else in it
        NoByte,   ///< a character that takes more than a byte
        TooLong,  ///< more bytes than BytePattern::longest
    };
    Kind kind;
    /// The group or character; empty if the pattern is too long.
    QString part;

    friend bool operator==(const PatternTrouble &, const PatternTrouble &) = default;
};

using PatternOutcome = Result<BytePattern, PatternTrouble>;

/// The bytes that \a text has as hexadecimal digits of either case; a question mark stands for any
/// digit. White space and commas set groups of bytes apart, which may begin with "0x".
PatternOutcome patternFromHex(const QString &text);

enum class MatchCase { No, Yes };

/// The characters of \a text as one byte each, after Latin-1. Blanks count. Without MatchCase::Yes
/// Latin letters hit in either case.
PatternOutcome patternFromText(const QString &text, MatchCase matchCase);
/// The same as two bytes for each UTF-16 unit, the low one first.
PatternOutcome patternFromText16(const QString &text, MatchCase matchCase);
