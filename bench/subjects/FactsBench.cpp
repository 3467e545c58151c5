// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/Peers.h"
#include "subjects/Samples.h"

#include "imageviews/ShownImageReader.h"

#include <QTemporaryDir>

namespace {

constexpr int sizes[] = {64, 256}; // MiB
constexpr int rounds = 15;
constexpr double maxOfCksum = 1.5;

/// Milliseconds in which the window reads the facts of \a image, all its turns together.
double readFacts(const ShownImage &image) {
    const Stopwatch stopwatch;
    ShownImageReader reader;
    while (reader.readOn(image)) {
    }
    return stopwatch.milliseconds();
}

void compareWithCksum(Table &table, const std::string &what, const ShownImage &image) {
    const std::string program = findProgram("cksum");
    if (program.empty())
        return table.gap(what, "cksum", "not installed");
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("image.bin"));
    writeFile(path, *image.bytes);
    const auto medians =
        interleaved(rounds, {[&] { return readFacts(image); },
                             [&] {
                                 return runCommand({program, path.toStdString()}).wall;
                             }});
    table.compare(what, milliseconds(medians[0]), {"cksum", milliseconds(medians[1])}, maxOfCksum);
}

void compareWithMemory(Table &table, const std::string &what, const ShownImage &image) {
    volatile quint64 sum = 0;
    const auto medians = interleaved(rounds, {[&] { return readFacts(image); },
                                              [&] {
                                                  const Stopwatch stopwatch;
                                                  sum = passOver(*image.bytes);
                                                  return stopwatch.milliseconds();
                                              }});
    table.compare(what, milliseconds(medians[0]),
                  {"one pass over memory", milliseconds(medians[1])});
}

} // namespace

void benchFacts(Table &table) {
    for (const int size : sizes) {
        const std::string what = "facts of " + std::to_string(size) + " MiB";
        const ShownImage image{.bytes = std::make_shared<QByteArray>(randomBytes(size * mebibyte)),
                               .origin = {}};
        compareWithCksum(table, what, image);
        compareWithMemory(table, what, image);
    }
}
