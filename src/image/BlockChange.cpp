// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/BlockChange.h"

#include "base/HugePages.h"

#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace {

void copy(char *to, const char *from, qint64 count) {
    if (count > 0)
        std::memcpy(to, from, std::size_t(count));
}

/// Puts \a added bytes of no particular value in the place of the \a removed ones at \a offset.
/// Memory is asked for before a byte is touched.
void makeRoom(QByteArray &image, qint64 offset, qint64 removed, qint64 added) {
    const qint64 size = image.size() - removed + added;
    const qint64 behind = image.size() - removed - offset;
    if (!image.isDetached()) {
        QByteArray fresh = uninitializedBytes(size);
        copy(fresh.data(), image.constData(), offset);
        copy(fresh.data() + offset + added, image.constData() + offset + removed, behind);
        image = std::move(fresh);
        return;
    }
    if (removed == added)
        return;
    image.reserve(std::max<qint64>(image.capacity(), size));
    image.resize(std::max<qint64>(image.size(), size));
    char *bytes = image.data() + offset;
    if (behind > 0)
        std::memmove(bytes + added, bytes + removed, std::size_t(behind));
    image.resize(size);
}

/// Each step doubles what is there already.
void write(const RepeatedBytes &content, char *to, qint64 length) {
    const qint64 patternSize = content.pattern.size();
    if (patternSize == 1) {
        std::memset(to, content.pattern.front(), std::size_t(length));
        return;
    }
    qint64 done = std::min(patternSize, length);
    copy(to, content.pattern.constData(), done);
    while (done < length) {
        const qint64 next = std::min(done, length - done);
        copy(to + done, to, next);
        done += next;
    }
}

void write(const RandomBytes &content, char *to, qint64 length) {
    QRandomGenerator generator(content.seed);
    std::array<quint32, 1024> numbers{};
    constexpr qint64 maxInTurn = sizeof(numbers);
    for (qint64 done = 0; done < length; done += maxInTurn) {
        generator.fillRange(numbers.data(), qsizetype(numbers.size()));
        std::memcpy(to + done, numbers.data(), std::size_t(std::min(maxInTurn, length - done)));
    }
}

} // namespace

BlockChange fillOf(ByteRange where, BlockContent content) {
    return {where.offset, where.length, where.length, std::move(content)};
}

BlockChange overwriteOf(qint64 offset, const QByteArray &bytes, qint64 imageSize) {
    const qint64 there = std::max<qint64>(imageSize - offset, 0);
    return {offset, std::min<qint64>(there, bytes.size()), bytes.size(), RepeatedBytes{bytes}};
}

BlockChange insertionOf(qint64 offset, const QByteArray &bytes) {
    return {offset, 0, bytes.size(), RepeatedBytes{bytes}};
}

Result<void, BlockTrouble> canBeMade(const BlockChange &change, qint64 imageSize) {
    if (change.offset < 0 || change.offset > imageSize ||
        change.replaced > imageSize - change.offset)
        return BlockTrouble::BehindEnd;
    if (change.replaced == 0 && change.length == 0)
        return BlockTrouble::NoBytes;
    if (change.length > largestImage - (imageSize - change.replaced))
        return BlockTrouble::TooLarge;
    return {};
}

ByteRange touchedBy(const BlockChange &change, qint64 imageSize) {
    if (change.replaced == change.length)
        return change.written();
    const qint64 sizeAfter = imageSize - change.replaced + change.length;
    return {change.offset, std::max(imageSize, sizeAfter) - change.offset};
}

QByteArray replacedBytes(const QByteArray &image, const BlockChange &change) {
    return copiedBytes(QByteArray::fromRawData(image.constData() + change.offset, change.replaced));
}

void makeChange(QByteArray &image, const BlockChange &change) {
    makeRoom(image, change.offset, change.replaced, change.length);
    if (change.length > 0)
        std::visit(
            [&](const auto &content) {
                write(content, image.data() + change.offset, change.length);
            },
            change.content);
}

void takeBackChange(QByteArray &image, const BlockChange &change, const QByteArray &replaced) {
    makeRoom(image, change.offset, change.length, change.replaced);
    if (!replaced.isEmpty())
        copy(image.data() + change.offset, replaced.constData(), replaced.size());
}
