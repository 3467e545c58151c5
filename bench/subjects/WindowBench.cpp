// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Memory.h"
#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/RawChild.h"
#include "subjects/Samples.h"
#include "subjects/WindowRuns.h"

#include "base/HugePages.h"

#include <QFile>

#include <cstring>
#include <stdexcept>

namespace {

constexpr qint64 readSize = 64 * mebibyte;
constexpr qint64 openedSize = 256 * mebibyte;
constexpr qint64 composedSize = 512 * mebibyte;
constexpr qint64 contentSize = 320 * mebibyte;
constexpr qint64 contentStart = 8 * mebibyte;
constexpr qint64 pressedSize = 64 * 1024;
constexpr int rounds = 7;
constexpr int pressRounds = 31;
constexpr double maxMoreThanTheTool = 20;
constexpr int composeRounds = 5;
constexpr double maxTimesTheBareWork = 2;

const QString readTab = QStringLiteral("0");
const QString burnTab = QStringLiteral("1");

/// The whole file into a buffer, by one call.
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
    const QString file = runs.makeFile(QStringLiteral("chip.bin"), randomBytes(readSize));
    runs.readFrom(file);
    runs.selectTab(readTab);
    runs.useReadData(true);
    const auto medians = interleaved(
        rounds, {[&] { return runs.read(readSize); }, [&] { return readOnce(file, readSize); }});
    table.compare("Read of 64 MiB, tool's end to first page", milliseconds(medians[0]),
                  {"one read()", milliseconds(medians[1])});
}

/// The tool hardly does anything, so that what is left is what the window adds to it.
void benchPress(Table &table, WindowRuns &runs) {
    runs.readFrom(runs.makeFile(QStringLiteral("small.bin"), randomBytes(pressedSize)));
    const auto medians =
        interleaved(pressRounds, {[&] { return runs.pressRead(pressedSize); },
                                  [&] {
                                      const Stopwatch stopwatch;
                                      runRawChild({"/bin/sh", "-l", "-c", runs.toolCommand()});
                                      return stopwatch.milliseconds();
                                  }});
    const std::string what = "Read of 64 KiB, press to first page";
    table.compare(what, milliseconds(medians[0]), {"shell and tool", milliseconds(medians[1])});
    table.limit(what + ", more than shell and tool", milliseconds(medians[0] - medians[1]),
                milliseconds(maxMoreThanTheTool));
}

void benchOpen(Table &table, WindowRuns &runs) {
    const QString file = runs.makeFile(QStringLiteral("opened.bin"), randomBytes(openedSize));
    runs.selectTab(burnTab);
    runs.useReadData(false);
    const auto medians = interleaved(rounds, {[&] { return runs.open(file, openedSize); },
                                              [&] { return readOnce(file, openedSize); }});
    table.compare("binary of 256 MiB opened to first page, in the window", milliseconds(medians[0]),
                  {"one read()", milliseconds(medians[1])});
}

/// The bytes that the composition makes, into a file. As in the program, the image and the file
/// before go when there are new ones, and nobody waits for the disk.
double composeOnce(const QByteArray &content, const QString &path, QByteArray &older) {
    touchMemory(2 * composedSize);
    const Stopwatch stopwatch;
    QByteArray image = uninitializedBytes(composedSize);
    char *end = image.data() + contentStart + content.size();
    std::memset(image.data(), 0xFF, contentStart);
    std::memcpy(image.data() + contentStart, content.constData(), size_t(content.size()));
    std::memset(end, 0xFF, size_t(composedSize - contentStart - content.size()));
    QFile file(path + QStringLiteral(".new"));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        file.write(image) != image.size())
        throw std::runtime_error("the composed bytes cannot be written");
    QFile::remove(path);
    if (!file.rename(path))
        throw std::runtime_error("the composed file cannot be renamed");
    older = std::move(image);
    return stopwatch.milliseconds();
}

void benchCompose(Table &table, WindowRuns &runs) {
    const QByteArray content = randomBytes(contentSize);
    const QString file = runs.makeFile(QStringLiteral("content.bin"), content);
    runs.selectTab(burnTab);
    runs.useReadData(false);
    runs.open(file, contentSize);
    runs.padFrom(contentStart, composedSize);
    QByteArray older;
    const auto medians = interleaved(
        composeRounds,
        {[&] {
             touchMemory(2 * composedSize);
             return runs.composeAnew(composedSize);
         },
         [&] { return composeOnce(content, file + QStringLiteral(".composed"), older); }});
    table.compare("composition of 512 MiB, click to first page", milliseconds(medians[0]),
                  {"fill, copy, write", milliseconds(medians[1])}, maxTimesTheBareWork);
}

} // namespace

void benchWindow(Table &table) {
    WindowRuns runs;
    benchRead(table, runs);
    benchPress(table, runs);
    benchOpen(table, runs);
    benchCompose(table, runs);
}
