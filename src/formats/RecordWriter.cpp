// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/RecordWriter.h"

#include "base/Digits.h"
#include "base/HugePages.h"
#include "formats/DecodedRecords.h"
#include "formats/RecordText.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

/// How many addresses two bytes tell apart: the upper half of a long one comes beside them.
constexpr qint64 halfOfAddresses = qint64(1) << 16;
/// The most bytes that a record counts, which it does in one byte.
constexpr int maxCount = maxByte;

/// The two digits of every byte.
constexpr auto digitPairs = [] {
    constexpr char digits[] = "0123456789ABCDEF";
    std::array<std::array<char, 2>, 256> pairs{};
    for (std::size_t value = 0; value < pairs.size(); ++value)
        pairs[value] = {digits[value / hexadecimal], digits[value % hexadecimal]};
    return pairs;
}();

/// One line: a mark and bytes in hexadecimal digits, with their sum.
class RecordLine {
public:
    explicit RecordLine(QByteArrayView mark) {
        for (const char character : mark)
            add(character);
    }

    RecordLine &byte(quint32 value) {
        const auto &digits = digitPairs[value & maxByte];
        characters_[std::size_t(size_)] = digits[0];
        characters_[std::size_t(size_) + 1] = digits[1];
        size_ += 2;
        sum_ += value;
        return *this;
    }
    /// The lower \a length bytes of \a value, the highest first.
    RecordLine &number(qint64 value, int length) {
        for (int shift = 8 * (length - 1); shift >= 0; shift -= 8)
            byte(quint32(value >> shift) & maxByte);
        return *this;
    }
    RecordLine &bytes(QByteArrayView values) {
        for (const char value : values)
            byte(quint8(value));
        return *this;
    }
    quint32 sum() const { return sum_; }
    /// The whole of it with its line feed.
    QByteArrayView withLineFeed() {
        add('\n');
        return QByteArrayView(characters_.data(), size_);
    }

private:
    void add(char character) { characters_[std::size_t(size_++)] = character; }

    std::array<char, 600> characters_;
    qsizetype size_ = 0;
    quint32 sum_ = 0;
};

void addIntelHex(QByteArray &text, qint64 address, intelHex::Type type, QByteArrayView data) {
    RecordLine line(":");
    line.byte(quint32(data.size())).number(address, 2).byte(type).bytes(data);
    line.byte(0x100 - (line.sum() & maxByte));
    text.append(line.withLineFeed());
}

/// Adds a record of \a type with \a data at \a address, which is \a addressLength bytes long.
void addSRecord(QByteArray &text, char type, qint64 address, int addressLength,
                QByteArrayView data = {}) {
    const char mark[] = {'S', type};
    RecordLine line(QByteArrayView(mark, 2));
    line.byte(quint32(addressLength + data.size() + 1)).number(address, addressLength).bytes(data);
    line.byte(~line.sum() & maxByte);
    text.append(line.withLineFeed());
}

/// How many bytes the addresses of S-records need.
int addressLengthOf(qint64 address, qint64 length) {
    const qint64 last = address + std::max<qint64>(length - 1, 0);
    return last < halfOfAddresses ? 2 : last < halfOfAddresses << 8 ? 3 : 4;
}

} // namespace

int maxRecordLength(RecordFormat format, qint64 address, qint64 length) {
    return format == RecordFormat::IntelHex ? maxCount
                                            : maxCount - addressLengthOf(address, length) - 1;
}

bool fitsAddresses(qint64 address, qint64 length) {
    return address >= 0 && address <= endOfAddresses && length <= endOfAddresses - address;
}

qint64 maxTextLength(const RecordLayout &layout, qint64 length) {
    constexpr qint64 aroundData = 15; // mark, count, address of four bytes, checksum, line end
    constexpr qint64 otherLines = 700;
    constexpr qint64 atBoundary = 2 * aroundData + 2; // another upper half, and a record cut in two
    const qint64 records = length / layout.recordLength + 1;
    return 2 * length + records * aroundData + (length / halfOfAddresses + 2) * atBoundary +
           otherLines;
}

RecordWriter::RecordWriter(const RecordLayout &layout, qsizetype length)
    : layout_(layout), length_(length), addressLength_(addressLengthOf(layout.address, length)) {}

bool RecordWriter::advance(QByteArrayView bytes, qsizetype max) {
    if (!std::exchange(begun_, true))
        begin();
    const qsizetype stop = at_ + std::min(max, length_ - at_);
    while (at_ < stop)
        writeRecord(bytes.sliced(at_, nextLength()));
    if (at_ == length_ && !std::exchange(ended_, true))
        end();
    return ended_;
}

void RecordWriter::begin() {
    text_ = uninitializedBytes(maxTextLength(layout_, length_));
    text_.truncate(0); // which keeps the room
    if (layout_.format == RecordFormat::SRecord)
        addSRecord(text_, '0', 0, 2, layout_.header);
}

// A record of Intel HEX stays within one upper half of the address.
qsizetype RecordWriter::nextLength() const {
    const qsizetype length = std::min<qsizetype>(layout_.recordLength, length_ - at_);
    if (layout_.format == RecordFormat::SRecord)
        return length;
    const qint64 lower = (layout_.address + at_) % halfOfAddresses;
    return std::min<qsizetype>(length, halfOfAddresses - lower);
}

void RecordWriter::writeRecord(QByteArrayView data) {
    const qint64 address = layout_.address + at_;
    if (layout_.format == RecordFormat::SRecord) {
        addSRecord(text_, char('1' + addressLength_ - 2), address, addressLength_, data);
    } else {
        const qint64 upper = address / halfOfAddresses;
        if (std::exchange(upper_, upper) != upper) {
            const char half[] = {char(upper >> 8), char(upper & maxByte)};
            addIntelHex(text_, 0, intelHex::LinearBase, QByteArrayView(half, 2));
        }
        addIntelHex(text_, address % halfOfAddresses, intelHex::Data, data);
    }
    at_ += data.size();
    ++records_;
}

void RecordWriter::end() {
    if (layout_.format == RecordFormat::IntelHex)
        return addIntelHex(text_, 0, intelHex::LastRecord, {});
    if (records_ < halfOfAddresses)
        addSRecord(text_, '5', records_, 2);
    else if (records_ < halfOfAddresses << 8)
        addSRecord(text_, '6', records_, 3);
    addSRecord(text_, char('9' - addressLength_ + 2), 0, addressLength_);
}
