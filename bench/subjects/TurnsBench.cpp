// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/Samples.h"
#include "subjects/WindowRuns.h"

#include <algorithm>

namespace {

constexpr int printedMebibytes = 300;
constexpr int rounds = 3;
constexpr double maxGapOfARun = 50;
constexpr double maxGapOfAReport = 100;

/// The largest report of a logic test that the window shows, of a chip with sixteen pins: \a levels
/// are what it says of two of them in each vector, \a verdict is its last line.
QByteArray largestLogicReport(const QByteArray &levels, const QByteArray &verdict) {
    constexpr int pins = 16;
    QByteArray text = "     ";
    for (int pin = 1; pin <= pins; ++pin)
        text += ' ' + QByteArray::number(pin).leftJustified(2);
    text += '\n';
    const QByteArray row = levels.repeated(pins / 2);
    for (int vector = 0; text.size() + row.size() + 16 < mebibyte - verdict.size(); ++vector)
        text += QByteArray::number(vector).rightJustified(4, '0') + ": " + row + '\n';
    return text + verdict;
}

/// The worst of some runs in which the tool prints the file at \a path so many times.
double longestGap(WindowRuns &runs, const QString &path, int times, Operation operation) {
    runs.useTool("exec cat" + (" '" + path.toUtf8() + '\'').repeated(times) + '\n');
    double longest = 0;
    for (int round = 0; round < rounds; ++round)
        longest = std::max(longest, runs.longestGap(operation));
    return longest;
}

} // namespace

void benchTurns(Table &table) {
    WindowRuns runs;
    // A small file, many times: the disk would be busy with a large one while its text is printed.
    const QString part = runs.makeFile(QStringLiteral("flood"), asciiText(mebibyte));
    table.limit("a run that prints 300 MiB, longest loop gap",
                milliseconds(longestGap(runs, part, printedMebibytes, ReadOperation)),
                milliseconds(maxGapOfARun));
    const auto limitReport = [&](const char *what, const QByteArray &text) {
        const QString report = runs.makeFile(QStringLiteral("report"), text);
        table.limit(what, milliseconds(longestGap(runs, report, 1, LogicOperation)),
                    milliseconds(maxGapOfAReport));
    };
    limitReport("a logic report of 1 MiB, longest loop gap",
                largestLogicReport("0  H  ", "Logic test successful.\n"));
    limitReport("a logic report of 1 MiB, every pin failed, longest loop gap",
                largestLogicReport("0- H- ", "Logic test failed: 99 errors encountered.\n"));
    limitReport("a logic report of 1 MiB, one line, longest loop gap",
                "Logic test" + QByteArray(mebibyte - 10, 'x'));
    limitReport("a logic report of 1 MiB, one field, longest loop gap",
                "      1 2 3 4\n0000: " + QByteArray(mebibyte - 22, 'x') + '\n');
    limitReport("a logic report of 1 MiB, titles, longest loop gap",
                QByteArray("Logic test\n").repeated(mebibyte / 11));
}
