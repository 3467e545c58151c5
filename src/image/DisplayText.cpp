// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/DisplayText.h"

#include "base/NumberWords.h"
#include "base/Units.h"
#include "base/Utf8.h"
#include "base/WordAt.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>
#include <new>
#include <utility>

namespace {

/// Bytes that are checked and counted in one piece, by themselves: after an edit its own block.
constexpr qsizetype blockSize = 4 * kibibyte;
/// In the place of the units of a block: it is no UTF-8.
constexpr quint16 spoilt = std::numeric_limits<quint16>::max();

/// Counts, in groups of words, the bytes that make the number of units differ from that of bytes:
/// each byte of a word is a counter of its own, marked in its lowest bit. A group is short enough
/// for the sum of all counters to fit into one byte.
constexpr qsizetype wordSize = sizeof(quint64);
constexpr qsizetype groupSize = 16 * wordSize;

bool isAsciiGroup(const char *group) {
    quint64 all = 0;
    for (qsizetype at = 0; at < groupSize; at += wordSize)
        all |= wordAt<quint64>(group + at);
    return (all & highestBitOfBytes) == 0;
}

qsizetype sumOfCounters(quint64 counters) {
    return qsizetype((counters * lowestBitOfBytes) >> 56);
}

qsizetype unitsInGroup(const char *group) {
    quint64 continuations = 0;
    quint64 pairs = 0;
    for (qsizetype at = 0; at < groupSize; at += wordSize) {
        const quint64 word = wordAt<quint64>(group + at);
        continuations += (word >> 7) & ~(word >> 6) & lowestBitOfBytes;
        pairs += (word >> 7) & (word >> 6) & (word >> 5) & (word >> 4) & lowestBitOfBytes;
    }
    return groupSize + sumOfCounters(pairs) - sumOfCounters(continuations);
}

/// How many units \a bytes begin: every byte that is no continuation begins one, and the first
/// of four bytes begins a pair of them.
qsizetype unitsIn(const char *bytes, qsizetype count) {
    qsizetype units = 0;
    qsizetype at = 0;
    for (; at + groupSize <= count; at += groupSize)
        units += isAsciiGroup(bytes + at) ? groupSize : unitsInGroup(bytes + at);
    for (; at < count; ++at) {
        const auto byte = quint8(bytes[at]);
        units += 1 + (byte >= 0xF0 ? 1 : 0) - (utf8::isContinuation(byte) ? 1 : 0);
    }
    return units;
}

/// Walks through the characters of UTF-8 text. The text was valid once; where an edit has spoilt it
/// since, a byte that begins no character reads as U+FFFD, and nothing is read past the end.
class CharacterReader {
public:
    explicit CharacterReader(QByteArrayView bytes) : bytes_(bytes) {}

    void skipContinuations() {
        while (!atEnd() && utf8::isContinuation(byteAt(0)))
            ++at_;
    }
    bool atEnd() const { return at_ >= bytes_.size(); }

    char32_t next() {
        const quint8 first = byteAt(0);
        const int length = utf8::lengthOfCharacter(first);
        if (length == 1 || !isWhole(length)) {
            ++at_;
            return first < 0x80 ? first : char32_t(QChar::ReplacementCharacter);
        }
        char32_t character = utf8::bitsOfFirst(first, length);
        for (int index = 1; index < length; ++index)
            character =
                (character << utf8::bitsPerContinuation) | (byteAt(index) & utf8::continuationBits);
        at_ += length;
        return character <= QChar::LastValidCodePoint ? character
                                                      : char32_t(QChar::ReplacementCharacter);
    }

private:
    quint8 byteAt(qsizetype offset) const { return quint8(bytes_.at(at_ + offset)); }
    bool isWhole(int length) const {
        if (length > bytes_.size() - at_)
            return false;
        for (int index = 1; index < length; ++index)
            if (!utf8::isContinuation(byteAt(index)))
                return false;
        return true;
    }

    QByteArrayView bytes_;
    qsizetype at_ = 0;
};

/// The longest character of UTF-8, in bytes.
constexpr qsizetype longestCharacter = 4;

/// Where the first character begins that begins at \a start or behind. More bytes that continue
/// one before it than a character has are left to be found wrong.
qsizetype firstCharacterFrom(QByteArrayView bytes, qsizetype start) {
    if (start == 0)
        return 0;
    const qsizetype end = std::min(start + longestCharacter - 1, bytes.size());
    while (start < end && utf8::isContinuation(quint8(bytes.at(start))))
        ++start;
    return std::min(start, bytes.size());
}

qsizetype blocksIn(qsizetype bytes) {
    return (bytes + blockSize - 1) / blockSize;
}

/// The characters that begin in the block of number \a block. All of \a bytes are UTF-8 if those
/// of each block are.
QByteArrayView charactersOf(QByteArrayView bytes, qsizetype block) {
    const qsizetype start = firstCharacterFrom(bytes, block * blockSize);
    return bytes.sliced(start, firstCharacterFrom(bytes, (block + 1) * blockSize) - start);
}

quint16 unitsOfBlock(QByteArrayView bytes, qsizetype block) {
    const QByteArrayView characters = charactersOf(bytes, block);
    return characters.isValidUtf8() ? quint16(unitsIn(characters.data(), characters.size()))
                                    : spoilt;
}

/// How many bytes of \a bytes, in whole groups, come before the unit of number \a unit, which
/// counts down by the units that they begin.
qsizetype bytesBeforeUnit(QByteArrayView bytes, qsizetype &unit) {
    qsizetype at = 0;
    while (bytes.size() - at >= groupSize) {
        const qsizetype units = unitsInGroup(bytes.data() + at);
        if (units > unit)
            break;
        unit -= units;
        at += groupSize;
    }
    return at;
}

} // namespace

DisplayText::DisplayText(ByteBuffer buffer)
    : buffer_(std::move(buffer)), byteLength_(lengthOf(buffer_)) {
    decode();
}

ByteRange DisplayText::update(const ByteBuffer &buffer, ByteRange changed) {
    const bool wasMultiByte = isMultiByte();
    const std::pair sizes(length_, byteLength_);
    const bool isKnown = buffer && buffer == buffer_;
    if (isKnown)
        decodeAgain(changed);
    else
        *this = DisplayText(buffer);
    if (!wasMultiByte && !isMultiByte())
        return changed;
    const bool keepsPlaces =
        isKnown && wasMultiByte && isMultiByte() && sizes == std::pair(length_, byteLength_);
    return keepsPlaces ? charactersAround(changed) : ByteRange{0, byteLength_};
}

void DisplayText::decodeAgain(ByteRange changed) {
    const qsizetype before = byteLength_;
    byteLength_ = lengthOf(buffer_);
    forgetBlocksBehindEnd();
    checkAgain(changed);
    if (byteLength_ != before)
        checkAgain({std::min(before, byteLength_), byteLength_});
    decode();
}

// No unit has a higher number than its byte. From the start of a block on, characters that begin
// before the changed bytes have the numbers that they had.
ByteRange DisplayText::charactersAround(ByteRange changed) const {
    const qint64 first = std::clamp<qint64>(changed.offset - longestCharacter, 0, byteLength_ - 1);
    const qint64 start = unitsBeforeBlock_[size_t(first / blockSize)];
    const qint64 end = std::min<qint64>(changed.end() + longestCharacter, byteLength_);
    return {start, end - start};
}

void DisplayText::forgetBlocksBehindEnd() {
    const auto left = size_t(blocksIn(byteLength_));
    for (size_t block = left; block < unitsOfBlock_.size(); ++block)
        setUnits(block, 0);
    unitsOfBlock_.resize(std::min(left, unitsOfBlock_.size()));
}

// The first bytes of a block tell where the characters of the block before it end.
void DisplayText::checkAgain(ByteRange changed) {
    const QByteArrayView bytes = decodedBytes();
    const qint64 start = std::clamp<qint64>(changed.offset, 0, bytes.size());
    const qint64 end = std::clamp<qint64>(changed.end(), start, bytes.size());
    const auto first = size_t(std::max<qint64>(start - longestCharacter, 0) / blockSize);
    const size_t behind = std::min(size_t(end / blockSize) + 1, unitsOfBlock_.size());
    for (size_t block = first; block < behind; ++block)
        setUnits(block, unitsOfBlock(bytes, qsizetype(block)));
}

// The first block that is no UTF-8 tells how all others read.
void DisplayText::checkOn() {
    const QByteArrayView bytes = decodedBytes();
    const auto blocks = size_t(blocksIn(bytes.size()));
    while (spoiltBlocks_ == 0 && unitsOfBlock_.size() < blocks) {
        const size_t block = unitsOfBlock_.size();
        unitsOfBlock_.push_back(0);
        setUnits(block, unitsOfBlock(bytes, qsizetype(block)));
    }
}

void DisplayText::setUnits(size_t block, quint16 units) {
    quint16 &known = unitsOfBlock_[block];
    spoiltBlocks_ += (units == spoilt ? 1 : 0) - (known == spoilt ? 1 : 0);
    units_ += (units == spoilt ? 0 : units) - (known == spoilt ? 0 : known);
    known = units;
}

void DisplayText::decode() {
    length_ = byteLength_;
    unitsBeforeBlock_.clear();
    try {
        checkOn();
        if (spoiltBlocks_ == 0 && units_ != byteLength_)
            countUnits();
    } catch (const std::bad_alloc &) {
        // What is known by now is right.
    }
}

qsizetype DisplayText::length() const {
    return length_;
}

qsizetype DisplayText::byteLength() const {
    return byteLength_;
}

bool DisplayText::isMultiByte() const {
    return !unitsBeforeBlock_.empty();
}

QString DisplayText::units(qsizetype position, qsizetype count) const {
    QByteArrayView bytes = decodedBytes();
    if (position < 0 || position >= length_ || count <= 0)
        return {};
    count = std::min(count, length_ - position);
    if (!isMultiByte()) {
        const qsizetype start = std::min(position, bytes.size());
        return QString::fromLatin1(bytes.sliced(start, std::min(count, bytes.size() - start)));
    }
    const auto after =
        std::upper_bound(unitsBeforeBlock_.begin(), unitsBeforeBlock_.end(), position);
    const qsizetype block = std::distance(unitsBeforeBlock_.begin(), after) - 1;
    bytes = bytes.sliced(firstCharacterFrom(bytes, std::min(block * blockSize, bytes.size())));
    qsizetype toSkip = position - *std::prev(after);
    CharacterReader reader(bytes.sliced(bytesBeforeUnit(bytes, toSkip)));
    reader.skipContinuations();
    QString text;
    while (text.size() < count && !reader.atEnd())
        for (const char16_t next : QChar::fromUcs4(reader.next()))
            if (toSkip-- <= 0 && text.size() < count)
                text.append(QChar(next));
    return text;
}

// The buffer may have grown, or even shrunk, since its length was taken.
QByteArrayView DisplayText::decodedBytes() const {
    if (!buffer_)
        return {};
    return QByteArrayView(std::as_const(*buffer_)).first(std::min(byteLength_, buffer_->size()));
}

void DisplayText::countUnits() {
    unitsBeforeBlock_.reserve(unitsOfBlock_.size());
    qsizetype before = 0;
    for (const quint16 units : unitsOfBlock_) {
        unitsBeforeBlock_.push_back(before);
        before += units;
    }
    length_ = units_;
}

QString hiddenBytesRemark(const DisplayText &text) {
    const qsizetype hidden = text.byteLength() - text.length();
    if (!text.isMultiByte() || hidden <= 0)
        return {};
    return hidden == 1
               ? QCoreApplication::translate(
                     "DisplayText", "The image reads as UTF-8: its last byte is not shown.")
               : QCoreApplication::translate(
                     "DisplayText", "The image reads as UTF-8: its last %1 bytes are not shown.")
                     .arg(grouped(hidden));
}
