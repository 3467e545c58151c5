// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "inspect/ImageFacts.h"

#include "base/Digits.h"
#include "base/Units.h"

#include <libdeflate.h>

#include <algorithm>
#include <cstring>
#include <numeric>

namespace {

/// What is looked at three times stays in the cache of the processor.
constexpr qsizetype pieceSize = 16 * kibibyte;
/// A number of bytes that the compiler knows, so that it adds many at a time.
constexpr qsizetype summedLane = 64;

quint32 sumOf(QByteArrayView bytes) {
    const auto *next = reinterpret_cast<const uchar *>(bytes.data());
    const uchar *const end = next + bytes.size();
    quint32 sum = 0;
    for (; end - next >= summedLane; next += summedLane)
        for (qsizetype i = 0; i < summedLane; ++i)
            sum += next[i];
    return std::accumulate(next, end, sum);
}

/// True if each of \a bytes, at least one, is \a value.
bool consistOf(QByteArrayView bytes, quint8 value) {
    return quint8(bytes.front()) == value &&
           std::memcmp(bytes.data(), bytes.data() + 1, size_t(bytes.size() - 1)) == 0;
}

} // namespace

bool ImageFactsReader::advance(QByteArrayView image, qsizetype max) {
    const qsizetype start = std::min<qsizetype>(facts_.size, image.size());
    QByteArrayView next = image.sliced(start, std::min(max, image.size() - start));
    while (!next.isEmpty()) {
        const qsizetype length = std::min(pieceSize, next.size());
        take(next.first(length));
        next = next.sliced(length);
    }
    return facts_.size >= image.size();
}

void ImageFactsReader::take(QByteArrayView bytes) {
    if (facts_.size == 0)
        facts_.onlyByte = quint8(bytes.front());
    if (facts_.onlyByte && !consistOf(bytes, *facts_.onlyByte))
        facts_.onlyByte.reset();
    facts_.crc32 = libdeflate_crc32(facts_.crc32, bytes.data(), size_t(bytes.size()));
    facts_.sum = quint16(facts_.sum + sumOf(bytes));
    facts_.size += bytes.size();
}

QString crc32Digits(quint32 crc32) {
    constexpr int digits = 8;
    return hexDigits(crc32, digits);
}
