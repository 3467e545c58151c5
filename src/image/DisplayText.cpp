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
#include <new>
#include <optional>
#include <utility>

namespace {

/// The units of multi-byte text are counted at the start of every block of this many bytes, and a
/// request decodes from there: at most one block before the first unit that is asked for.
constexpr qsizetype blockSize = 512;

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
        char32_t character = first & (0x7F >> length);
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

bool isAscii(QByteArrayView bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return quint8(byte) < 0x80; });
}

/// The longest character of UTF-8, in bytes.
constexpr qint64 longestCharacter = 4;

/// Bytes that are checked in one piece. Pieces begin with the first byte of a character, so that
/// the whole is UTF-8 if all of them are.
constexpr qint64 checkedBlock = 256 * kibibyte;

std::optional<ByteRange> firstBlockThatIsNoUtf8(QByteArrayView bytes) {
    for (qint64 start = 0; start < bytes.size();) {
        qint64 end = std::min<qint64>(start + checkedBlock, bytes.size());
        while (end < bytes.size() && utf8::isContinuation(quint8(bytes.at(end))) &&
               end < start + checkedBlock + longestCharacter)
            ++end;
        if (!bytes.sliced(start, end - start).isValidUtf8())
            return ByteRange{start, end - start};
        start = end;
    }
    return std::nullopt;
}

} // namespace

DisplayText::DisplayText(ByteBuffer buffer) : buffer_(std::move(buffer)) {
    decode();
}

ByteRange DisplayText::update(const ByteBuffer &buffer, ByteRange changed) {
    const bool wasMultiByte = isMultiByte();
    if (buffer && buffer == buffer_ && staysOneByte(changed)) {
        byteLength_ = lengthOf(buffer_);
        length_ = byteLength_;
    } else {
        *this = DisplayText(buffer);
    }
    return wasMultiByte || isMultiByte() ? ByteRange{0, lengthOf(buffer)} : changed;
}

bool DisplayText::staysOneByte(ByteRange changed) {
    const QByteArrayView bytes = std::as_const(*buffer_);
    const qint64 start = std::clamp<qint64>(changed.offset, 0, bytes.size());
    const qint64 end = std::clamp<qint64>(changed.end(), start, bytes.size());
    const bool grew = bytes.size() > byteLength_;
    if (bytes.size() < byteLength_ || (grew && (start > byteLength_ || end < bytes.size())))
        return false;
    switch (kind_) {
    case Kind::Ascii:
        return isAscii(bytes.sliced(start, end - start)) || noteOffending(start - 1, end + 1);
    case Kind::OneByte:
        // The byte behind the offending ones tells that their last character ends with them.
        return end <= offending_.offset || start > offending_.end() ||
               noteOffending(std::min(start, offending_.offset), std::max(end, offending_.end()));
    case Kind::Utf8:
        break;
    }
    return false;
}

// Bytes from one character's first to another's are UTF-8 by themselves if the whole is.
bool DisplayText::noteOffending(qint64 start, qint64 end) {
    const QByteArrayView bytes = std::as_const(*buffer_);
    start = std::max<qint64>(start, 0);
    end = std::min<qint64>(end, bytes.size());
    const auto isInCharacter = [&](qint64 at) {
        return at > 0 && at < bytes.size() && utf8::isContinuation(quint8(bytes.at(at)));
    };
    if (isInCharacter(start) || isInCharacter(end) ||
        bytes.sliced(start, end - start).isValidUtf8())
        return false;
    kind_ = Kind::OneByte;
    offending_ = {start, end - start};
    return true;
}

void DisplayText::decode() {
    byteLength_ = lengthOf(buffer_);
    length_ = byteLength_;
    const QByteArrayView bytes = decodedBytes();
    if (const std::optional<ByteRange> offending = firstBlockThatIsNoUtf8(bytes)) {
        kind_ = Kind::OneByte;
        offending_ = *offending;
        return;
    }
    try {
        countUnits();
        kind_ = isMultiByte() ? Kind::Utf8 : Kind::Ascii;
    } catch (const std::bad_alloc &) {
        kind_ = Kind::OneByte;
        offending_ = {0, bytes.size()};
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
    const QByteArrayView bytes = decodedBytes();
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
    qsizetype unit = *std::prev(after);
    CharacterReader reader(bytes.sliced(std::min(block * blockSize, bytes.size())));
    reader.skipContinuations();
    QString text;
    while (text.size() < count && !reader.atEnd())
        for (const char16_t next : QChar::fromUcs4(reader.next()))
            if (unit++ >= position && text.size() < count)
                text.append(QChar(next));
    return text;
}

// The buffer may have grown, or even shrunk, since its length was taken.
QByteArrayView DisplayText::decodedBytes() const {
    if (!buffer_)
        return {};
    return QByteArrayView(std::as_const(*buffer_)).first(std::min(byteLength_, buffer_->size()));
}

// Most images have no characters of several bytes, and need no numbers.
void DisplayText::countUnits() {
    const QByteArrayView bytes = decodedBytes();
    std::vector<qsizetype> unitsBefore;
    qsizetype units = 0;
    for (qsizetype start = 0; start < bytes.size(); start += blockSize) {
        const qsizetype size = std::min(blockSize, bytes.size() - start);
        if (!unitsBefore.empty())
            unitsBefore.push_back(units);
        units += unitsIn(bytes.data() + start, size);
        if (!unitsBefore.empty() || units == start + size)
            continue;
        unitsBefore.reserve(size_t(bytes.size() / blockSize + 1));
        for (qsizetype before = 0; before <= start; before += blockSize)
            unitsBefore.push_back(before);
    }
    length_ = units;
    unitsBeforeBlock_ = std::move(unitsBefore);
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
