// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/Peers.h"
#include "subjects/Samples.h"

#include "inspect/HitIndex.h"

#include <QTemporaryDir>

#include <stdexcept>

namespace {

constexpr int rounds = 9;
constexpr double maxOfPass = 2.0;
/// What is searched for; it stands at the very end.
const char needle[] = "VELM";

/// Milliseconds in which all hits in \a image are counted.
double countHits(const QByteArray &image, const BytePattern &pattern) {
    const Stopwatch stopwatch;
    HitIndex index(pattern);
    while (!index.advance(image, 1)) {
    }
    const double taken = stopwatch.milliseconds();
    if (index.total().value_or(0) < 1)
        throw std::runtime_error("what was searched for was not found");
    return taken;
}

void compareWithMemory(Table &table, const std::string &what, const QByteArray &image,
                       const BytePattern &pattern) {
    volatile quint64 sum = 0;
    const auto medians = interleaved(rounds, {[&] { return countHits(image, pattern); },
                                              [&] {
                                                  const Stopwatch stopwatch;
                                                  sum = passOver(image);
                                                  return stopwatch.milliseconds();
                                              }});
    table.compare(what, milliseconds(medians[0]),
                  {"one pass over memory", milliseconds(medians[1])}, maxOfPass);
}

void compareWithGrep(Table &table, const std::string &what, const QByteArray &image,
                     const BytePattern &pattern) {
    const std::string program = findProgram("grep");
    const std::string bytewise = findProgram("env");
    if (program.empty() || bytewise.empty())
        return table.gap(what, "grep -c", "not installed");
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("image.bin"));
    writeFile(path, image);
    const std::vector<std::string> command{bytewise, "LC_ALL=C", program, "-c",
                                           "-a",     "-F",       needle,  path.toStdString()};
    const auto medians = interleaved(rounds, {[&] { return countHits(image, pattern); },
                                              [&] { return runCommand(command).wall; }});
    table.compare(what, milliseconds(medians[0]), {"grep -c", milliseconds(medians[1])});
}

} // namespace

void benchFind(Table &table) {
    const BytePattern pattern = *patternFromText(QString::fromLatin1(needle), MatchCase::Yes);
    for (const int size : {64, 256}) {
        const std::string what = "find 4 bytes in " + std::to_string(size) + " MiB";
        QByteArray image = randomBytes(size * mebibyte);
        image.replace(image.size() - pattern.size(), pattern.size(), needle);
        compareWithMemory(table, what, image, pattern);
        compareWithGrep(table, what, image, pattern);
    }
}
