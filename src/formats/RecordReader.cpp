// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "formats/RecordReader.h"

#include "base/Digits.h"
#include "base/Result.h"
#include "base/Utf8.h"
#include "formats/RecordText.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

/// Longer than any record, with blanks around it.
constexpr qsizetype longestLine = 1024;
/// More bytes than any record has.
constexpr qsizetype maxRecordBytes = 512;

/// The index of the first line end in \a text; -1 if there is none.
qsizetype lineEndIn(QByteArrayView text) {
    const auto find = [](QByteArrayView in, char end) -> qsizetype {
        const void *found = std::memchr(in.data(), end, std::size_t(in.size()));
        return found ? static_cast<const char *>(found) - in.data() : -1;
    };
    if (text.isEmpty())
        return -1;
    const qsizetype feed = find(text, '\n');
    const qsizetype carriage = find(feed < 0 ? text : text.first(feed), '\r');
    return carriage < 0 ? feed : carriage;
}

/// The bytes that hexadecimal digits stand for.
struct Digits {
    std::array<char, maxRecordBytes> bytes;
    qsizetype size = 0;

    Result<void, TroubleKind> read(QByteArrayView digits);
};

Result<void, TroubleKind> Digits::read(QByteArrayView digits) {
    if (digits.size() / 2 > maxRecordBytes)
        return TroubleKind::BadCount;
    int worst = 0;
    const qsizetype pairs = digits.size() / 2;
    const char *digit = digits.data();
    for (char *byte = bytes.data(), *const end = byte + pairs; byte != end; ++byte, digit += 2) {
        const int value = valueOfHexDigit(digit[0]) * hexadecimal | valueOfHexDigit(digit[1]);
        worst |= value;
        *byte = char(value);
    }
    const bool isOdd = digits.size() % 2 != 0;
    if (worst < 0 || (isOdd && valueOfHexDigit(digits.back()) < 0))
        return TroubleKind::NoHexDigit;
    if (isOdd)
        return TroubleKind::OddDigit;
    size = pairs;
    return {};
}

} // namespace

bool RecordReader::advance(QByteArrayView text, qsizetype max) {
    if (at_ == 0 && text.startsWith(utf8::byteOrderMark))
        at_ = utf8::byteOrderMark.size();
    const qsizetype stop = at_ + std::min(max, text.size() - at_);
    while (at_ < stop && state_ == State::Lines) {
        takeLine(text);
        if (state_ == State::WithinLongLine)
            skipLongLine(text, stop);
    }
    if (state_ == State::WithinLongLine)
        skipLongLine(text, stop);
    if (state_ == State::BehindEnd)
        lookBehindEnd(text, stop);
    if (at_ == text.size())
        finish();
    return state_ == State::Done;
}

void RecordReader::takeLine(QByteArrayView text) {
    const QByteArrayView rest = text.sliced(at_);
    const QByteArrayView looked = rest.first(std::min(rest.size(), longestLine));
    const qsizetype end = lineEndIn(looked);
    if (end < 0 && looked.size() < rest.size()) {
        complain(TroubleKind::NoRecord);
        lastRecord_ = line_;
        state_ = State::WithinLongLine;
        return;
    }
    const QByteArrayView line = withoutBlanks(end < 0 ? looked : looked.first(end));
    at_ += end < 0 ? looked.size() : end;
    if (!line.isEmpty())
        takeRecord(line);
    if (state_ == State::Lines)
        passLineEnd(text);
}

void RecordReader::takeRecord(QByteArrayView line) {
    lastRecord_ = line_;
    const bool isSRecord = format_ == RecordFormat::SRecord;
    const qsizetype digitsAt = isSRecord ? 2 : 1;
    if (formatOfMark(line.front()) != format_)
        return complain(TroubleKind::NoRecord);
    if (line.size() < digitsAt)
        return complain(TroubleKind::BadCount);
    Digits digits;
    const auto read = digits.read(line.sliced(digitsAt));
    if (const TroubleKind *trouble = read.failure())
        return complain(*trouble);
    const RecordBytes bytes(QByteArrayView(digits.bytes.data(), digits.size));
    const bool isEnd = isSRecord ? sRecord_.take(line[1], bytes, line_, decoded_)
                                 : intelHex_.take(bytes, line_, decoded_);
    if (isEnd)
        state_ = State::BehindEnd;
    if (decoded_.bytes.pieces().size() > maxPieces) {
        complain(TroubleKind::TooManyPieces);
        state_ = State::Done;
    }
}

void RecordReader::skipLongLine(QByteArrayView text, qsizetype stop) {
    const qsizetype end = lineEndIn(text.sliced(at_, std::max<qsizetype>(stop - at_, 0)));
    if (end < 0) {
        at_ = std::max(at_, stop);
        return;
    }
    at_ += end;
    state_ = State::Lines;
    passLineEnd(text);
}

void RecordReader::lookBehindEnd(QByteArrayView text, qsizetype stop) {
    while (at_ < stop) {
        if (endsLine(text[at_])) {
            passLineEnd(text);
        } else if (isBlank(text[at_])) {
            ++at_;
        } else {
            complain(TroubleKind::DataBehindEnd);
            state_ = State::Done;
            return;
        }
    }
}

void RecordReader::passLineEnd(QByteArrayView text) {
    if (at_ == text.size())
        return;
    at_ += lineEndAt(text, at_);
    ++line_;
}

void RecordReader::finish() {
    if (state_ == State::Lines || state_ == State::WithinLongLine)
        decoded_.troubles.add(TroubleKind::MissingEnd, lastRecord_);
    state_ = State::Done;
}
