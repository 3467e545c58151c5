// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "subjects/Samples.h"

#include "base/HugePages.h"
#include "support/FileHelpers.h"

#include <QFile>

#include <array>
#include <cstring>
#include <random>
#include <stdexcept>
#include <unistd.h>

QByteArray randomBytes(qint64 size) {
    QByteArray bytes = uninitializedBytes(size);
    std::mt19937 random(std::mt19937::default_seed);
    for (char *at = bytes.data(), *end = at + size; at < end; ++at)
        *at = char(random() & 0xFF);
    return bytes;
}

QByteArray asciiText(qint64 size) {
    constexpr int firstPrintable = 0x20;
    constexpr int printable = 0x5F;
    constexpr qint64 lineLength = 72;
    QByteArray bytes = uninitializedBytes(size);
    char *data = bytes.data();
    for (qint64 at = 0; at < size; ++at)
        data[at] = (at + 1) % lineLength == 0
                       ? '\n'
                       : char(firstPrintable + (at * 7 + at / lineLength) % printable);
    return bytes;
}

QByteArray multiByteText(qint64 size) {
    const QByteArray period = QStringLiteral("a\u00E9\u20AC\U0001F600").toUtf8();
    return period.repeated(qsizetype(size / period.size()));
}

quint64 passOver(const QByteArray &bytes) {
    std::array<quint64, 4> sums{};
    std::array<quint64, 4> words{};
    for (qsizetype at = 0; at + qsizetype(sizeof words) <= bytes.size(); at += sizeof words) {
        std::memcpy(words.data(), bytes.constData() + at, sizeof words);
        for (size_t lane = 0; lane < sums.size(); ++lane)
            sums[lane] += words[lane];
    }
    return sums[0] ^ sums[1] ^ sums[2] ^ sums[3];
}

void writeFile(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    // To the disk, so that a measured saving need not wait for this as well.
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush() ||
        ::fsync(file.handle()) != 0)
        throw std::runtime_error("cannot write " + path.toStdString());
}

QByteArray readFile(const QString &path) {
    const QByteArray bytes = readWholeFile(path);
    if (bytes.isNull())
        throw std::runtime_error("cannot read " + path.toStdString());
    return bytes;
}
