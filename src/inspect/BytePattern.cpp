// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "inspect/BytePattern.h"

#include "base/Digits.h"

#include <QRegularExpression>

#include <algorithm>
#include <bit>
#include <optional>
#include <utility>

namespace {

using Kind = PatternTrouble::Kind;

/// As many as the compiler compares at once.
constexpr qsizetype comparedLane = 16;
/// In what the two cases of a letter of Latin-1 differ.
constexpr quint8 caseBit = 0x20;
constexpr quint8 digitMask = 0x0F;

/// Higher the less often \a byte is hit by chance: chips are full of 0xFF and 0x00.
int tellingness(BytePattern::Byte byte) {
    const bool isFiller = byte.value == byte.mask || byte.value == 0;
    return 2 * std::popcount(byte.mask) - (isFiller ? bitsInByte : 0);
}

/// The place of the byte that tells most, less those that are like \a other.
qsizetype mostTelling(const std::vector<BytePattern::Byte> &bytes,
                      std::optional<qsizetype> other = std::nullopt) {
    const auto worth = [&](qsizetype place) {
        const BytePattern::Byte byte = bytes[std::size_t(place)];
        const bool tellsLess = other && byte == bytes[std::size_t(*other)];
        return tellingness(byte) - (tellsLess ? 2 * bitsInByte : 0);
    };
    qsizetype best = other == 0 && bytes.size() > 1 ? 1 : 0;
    for (qsizetype place = 0; place < qsizetype(bytes.size()); ++place)
        if (place != other && worth(place) > worth(best))
            best = place;
    return best;
}

/// A digit with its place in the pattern, as a byte of which the low half is asked for.
std::optional<BytePattern::Byte> halfByteOf(QChar digit) {
    if (digit == u'?')
        return BytePattern::Byte{0, 0};
    if (const auto value = digitValue(digit, hexadecimal))
        return BytePattern::Byte{quint8(*value), digitMask};
    return std::nullopt;
}

PatternOutcome outcomeOf(std::vector<BytePattern::Byte> bytes) {
    if (qsizetype(bytes.size()) > BytePattern::longest)
        return PatternTrouble{Kind::TooLong, {}};
    return BytePattern(std::move(bytes));
}

/// Appends the bytes of \a group, if it stands for some.
Result<void, Kind> appendGroup(QStringView group, std::vector<BytePattern::Byte> &bytes) {
    if (group.startsWith(u"0x", Qt::CaseInsensitive))
        group = group.sliced(2);
    if (group.isEmpty() || !std::all_of(group.begin(), group.end(), halfByteOf))
        return Kind::NoDigits;
    if (group.size() % 2 != 0)
        return Kind::HalfByte;
    for (qsizetype i = 0; i < group.size(); i += 2) {
        const BytePattern::Byte high = *halfByteOf(group[i]);
        const BytePattern::Byte low = *halfByteOf(group[i + 1]);
        bytes.push_back({quint8(high.value << bitsInHexDigit | low.value),
                         quint8(high.mask << bitsInHexDigit | low.mask)});
    }
    return {};
}

/// True if the other case of \a unit is in Latin-1, too.
bool hasOtherCase(char16_t unit) {
    const QChar lower = QChar(unit).toLower();
    const QChar upper = QChar(unit).toUpper();
    return lower.unicode() <= maxByte && (lower.unicode() ^ upper.unicode()) == caseBit;
}

BytePattern::Byte lowByteOf(char16_t unit, MatchCase matchCase) {
    const bool eitherCase = matchCase == MatchCase::No && hasOtherCase(unit);
    const auto mask = quint8(eitherCase ? ~caseBit : maxByte);
    return {quint8(unit & mask), mask};
}

} // namespace

BytePattern::BytePattern(std::vector<Byte> bytes) : bytes_(std::move(bytes)) {
    if (bytes_.empty())
        return;
    const qsizetype best = mostTelling(bytes_);
    telling_ = {best, mostTelling(bytes_, best)};
}

bool BytePattern::hits(const uchar *bytes) const {
    const Byte *next = bytes_.data();
    const Byte *const end = next + bytes_.size();
    for (; end - next >= comparedLane; next += comparedLane, bytes += comparedLane) {
        int misses = 0;
        for (qsizetype i = 0; i < comparedLane; ++i)
            misses |= (bytes[i] ^ next[i].value) & next[i].mask;
        if (misses != 0)
            return false;
    }
    for (; next != end; ++next, ++bytes)
        if (!next->hits(*bytes))
            return false;
    return true;
}

PatternOutcome patternFromHex(const QString &text) {
    static const QRegularExpression gaps(QStringLiteral(R"([\s,]+)"));
    std::vector<BytePattern::Byte> bytes;
    for (const QString &group : text.split(gaps, Qt::SkipEmptyParts)) {
        const auto appended = appendGroup(group, bytes);
        if (const Kind *trouble = appended.failure())
            return PatternTrouble{*trouble, group};
    }
    return outcomeOf(std::move(bytes));
}

PatternOutcome patternFromText(const QString &text, MatchCase matchCase) {
    std::vector<BytePattern::Byte> bytes;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].unicode() > maxByte)
            return PatternTrouble{Kind::NoByte, text.mid(i, text[i].isHighSurrogate() ? 2 : 1)};
        bytes.push_back(lowByteOf(text[i].unicode(), matchCase));
    }
    return outcomeOf(std::move(bytes));
}

PatternOutcome patternFromText16(const QString &text, MatchCase matchCase) {
    std::vector<BytePattern::Byte> bytes;
    for (const QChar unit : text) {
        bytes.push_back(lowByteOf(unit.unicode(), matchCase));
        bytes.push_back({quint8(unit.unicode() >> bitsInByte), maxByte});
    }
    return outcomeOf(std::move(bytes));
}
