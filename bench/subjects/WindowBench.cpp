// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/Samples.h"
#include "subjects/WindowRuns.h"

#include "files/HugePages.h"

#include <QFile>

#include <stdexcept>

namespace {

constexpr qint64 readSize = 64 * mebibyte;
constexpr qint64 openedSize = 256 * mebibyte;
constexpr int rounds = 7;

const QString readTab = QStringLiteral("0");
const QString burnTab = QStringLiteral("1");

// The whole file into a buffer, by one call.
double readOnce(const QString &path, qint64 size) {
    const Stopwatch stopwatch;
    QByteArray bytes = uninitializedBytes(size);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ||
        file.read(bytes.data(), size) != size)
        throw std::runtime_error("the file cannot be read");
    return stopwatch.milliseconds();
}

void benchRead(Table &table, WindowRuns &runs) {
    const QString file = runs.makeFile(QStringLiteral("chip.bin"), readSize);
    runs.readFrom(file);
    runs.selectTab(readTab);
    runs.useReadData(true);
    const auto medians = interleaved(
        rounds, {[&] { return runs.read(readSize); }, [&] { return readOnce(file, readSize); }});
    table.compare("Read of 64 MiB, tool's end to first page", milliseconds(medians[0]),
                  {"one read()", milliseconds(medians[1])});
}

void benchOpen(Table &table, WindowRuns &runs) {
    const QString file = runs.makeFile(QStringLiteral("opened.bin"), openedSize);
    runs.selectTab(burnTab);
    runs.useReadData(false);
    const auto medians = interleaved(rounds, {[&] { return runs.open(file, openedSize); },
                                              [&] { return readOnce(file, openedSize); }});
    table.compare("binary of 256 MiB opened to first page, in the window", milliseconds(medians[0]),
                  {"one read()", milliseconds(medians[1])});
}

} // namespace

void benchWindow(Table &table) {
    WindowRuns runs;
    benchRead(table, runs);
    benchOpen(table, runs);
}
