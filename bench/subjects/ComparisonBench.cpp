// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/Peers.h"
#include "subjects/Samples.h"

#include "base/TurnOfWork.h"
#include "inspect/ImageDifferences.h"

#include <QTemporaryDir>

namespace {

constexpr int rounds = 9;
constexpr double maxOfPass = 1.5;
constexpr double maxOfCmp = 1.0;
/// Every so many bytes one differs, as in a program that was patched here and there.
constexpr qint64 distance = 1000;

struct Images {
    QByteArray one;
    QByteArray other;
};

Images imagesOf(qint64 size, bool differ) {
    Images images{randomBytes(size), {}};
    images.other = images.one;
    images.other.detach();
    if (differ)
        for (qint64 offset = 0; offset < size; offset += distance)
            images.other[offset] = char(~images.other[offset]);
    return images;
}

/// Milliseconds of all turns together.
double compare(const Images &images) {
    const Stopwatch stopwatch;
    ImageDifferencesReader reader;
    while (!reader.advance(images.one, images.other, maxBytesInTurn)) {
    }
    return stopwatch.milliseconds();
}

void compareWithMemory(Table &table, const std::string &what, const Images &images) {
    volatile quint64 sum = 0;
    const auto medians = interleaved(rounds, {[&] { return compare(images); },
                                              [&] {
                                                  const Stopwatch stopwatch;
                                                  sum = passOver(images.one);
                                                  sum = passOver(images.other);
                                                  return stopwatch.milliseconds();
                                              }});
    table.compare(what, milliseconds(medians[0]),
                  {"one pass over both in memory", milliseconds(medians[1])}, maxOfPass);
}

void compareWithCmp(Table &table, const std::string &what, const Images &images) {
    const std::string program = findProgram("cmp");
    if (program.empty())
        return table.gap(what, "cmp", "not installed");
    const QTemporaryDir folder;
    const QString one = folder.filePath(QStringLiteral("one.bin"));
    const QString other = folder.filePath(QStringLiteral("other.bin"));
    writeFile(one, images.one);
    writeFile(other, images.other);
    const auto medians = interleaved(
        rounds, {[&] { return compare(images); },
                 [&] {
                     return runCommand({program, one.toStdString(), other.toStdString()}).wall;
                 }});
    table.compare(what, milliseconds(medians[0]), {"cmp", milliseconds(medians[1])}, maxOfCmp);
}

} // namespace

void benchComparison(Table &table) {
    for (const qint64 size : {64, 256}) {
        const std::string what = "comparison of " + std::to_string(size) + " MiB";
        compareWithCmp(table, what + ", equal", imagesOf(size * mebibyte, false));
        compareWithMemory(table, what + ", a byte in 1,000 differs",
                          imagesOf(size * mebibyte, true));
    }
}
