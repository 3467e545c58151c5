#include "image/DisplayText.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace {

// The units of multi-byte text are counted at the start of every block of this many bytes, and a
// request decodes from there: at most one block before the first unit that is asked for.
constexpr qsizetype blockSize = 4096;

constexpr int continuationBits = 6;
constexpr quint8 continuationMask = 0x3F;

bool isContinuation(quint8 byte) {
    return (byte & 0xC0) == 0x80;
}

// How many units the bytes begin: every byte that is no continuation begins one, and the first
// of four bytes begins a pair of them. Eight bytes at a time, each marked in its lowest bit.
qsizetype unitsIn(const char *bytes, qsizetype count) {
    constexpr quint64 lowestBits = 0x0101010101010101;
    constexpr int wordSize = sizeof(quint64);
    qsizetype units = count;
    qsizetype at = 0;
    for (; at + wordSize <= count; at += wordSize) {
        quint64 word = 0;
        std::memcpy(&word, bytes + at, wordSize);
        const quint64 continuations = (word >> 7) & ~(word >> 6) & lowestBits;
        const quint64 pairs = (word >> 7) & (word >> 6) & (word >> 5) & (word >> 4) & lowestBits;
        units += std::popcount(pairs) - std::popcount(continuations);
    }
    for (; at < count; ++at) {
        const auto byte = static_cast<quint8>(bytes[at]);
        units += (byte >= 0xF0 ? 1 : 0) - (isContinuation(byte) ? 1 : 0);
    }
    return units;
}

// How many bytes the character takes that begins with this byte.
int lengthOfCharacter(quint8 first) {
    if (first < 0xC0)
        return 1;
    if (first < 0xE0)
        return 2;
    return first < 0xF0 ? 3 : 4;
}

// Walks through the characters of UTF-8 text. The text was valid once; where an edit has spoilt it
// since, a byte that begins no character reads as U+FFFD, and nothing is read past the end.
class CharacterReader {
public:
    explicit CharacterReader(QByteArrayView bytes) : bytes_(bytes) {}

    void skipContinuations() {
        while (!atEnd() && isContinuation(byteAt(0)))
            ++at_;
    }
    bool atEnd() const { return at_ >= bytes_.size(); }

    char32_t next() {
        const quint8 first = byteAt(0);
        const int length = lengthOfCharacter(first);
        if (length == 1 || !isWhole(length)) {
            ++at_;
            return first < 0x80 ? first : char32_t(QChar::ReplacementCharacter);
        }
        char32_t character = first & (0x7F >> length);
        for (int index = 1; index < length; ++index)
            character = (character << continuationBits) | (byteAt(index) & continuationMask);
        at_ += length;
        return character <= QChar::LastValidCodePoint ? character
                                                      : char32_t(QChar::ReplacementCharacter);
    }

private:
    quint8 byteAt(qsizetype offset) const { return static_cast<quint8>(bytes_.at(at_ + offset)); }
    bool isWhole(int length) const {
        if (length > bytes_.size() - at_)
            return false;
        for (int index = 1; index < length; ++index)
            if (!isContinuation(byteAt(index)))
                return false;
        return true;
    }

    QByteArrayView bytes_;
    qsizetype at_ = 0;
};

} // namespace

DisplayText::DisplayText(ByteBuffer buffer)
    : buffer_(std::move(buffer)), byteLength_(lengthOf(buffer_)), length_(byteLength_) {
    if (decodedBytes().isValidUtf8())
        countUnits();
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

void DisplayText::countUnits() {
    const QByteArrayView bytes = decodedBytes();
    std::vector<qsizetype> unitsBefore;
    unitsBefore.reserve(static_cast<size_t>(bytes.size() / blockSize + 1));
    qsizetype units = 0;
    for (qsizetype start = 0; start < bytes.size(); start += blockSize) {
        unitsBefore.push_back(units);
        units += unitsIn(bytes.data() + start, std::min(blockSize, bytes.size() - start));
    }
    length_ = units;
    if (units < bytes.size())
        unitsBeforeBlock_ = std::move(unitsBefore);
}
