// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/RawChild.h"
#include "subjects/Samples.h"

#include "process/ChildProcess.h"
#include "process/Pipe.h"

#include <QCoreApplication>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace {

constexpr int rounds = 301;
constexpr double maxTimesSpawn = 1.35;
constexpr qint64 touchedMemory = 1024 * mebibyte;

const std::string childPath = "/bin/true";

/// From nothing to a child that has been reaped, as a tool run has it.
double runOurChild() {
    const Stopwatch stopwatch;
    Pipe input(Pipe::Direction::ToChild);
    Pipe output(Pipe::Direction::FromChild);
    Pipe error(Pipe::Direction::FromChild);
    ChildProcess child;
    child.setLaunchPath(QString::fromStdString(childPath));
    child.setStandardStreams(&input, &output, &error);
    if (!child.start())
        throw std::runtime_error("the child was not started");
    while (!child.hasEnded())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    const double taken = stopwatch.milliseconds();
    if (child.terminationStatus() != 0)
        throw std::runtime_error("the child failed");
    return taken;
}

double runTheirChild() {
    const Stopwatch stopwatch;
    runRawChild({childPath});
    return stopwatch.milliseconds();
}

void compare(Table &table, const std::string &what) {
    const auto medians = interleaved(rounds, {runOurChild, runTheirChild});
    table.compare(what, milliseconds(medians[0]),
                  {"posix_spawn with pipes", milliseconds(medians[1])}, maxTimesSpawn);
}

} // namespace

void benchChild(Table &table) {
    compare(table, "child, start to end");
    const std::unique_ptr<char, decltype(&std::free)> memory(
        static_cast<char *>(std::malloc(touchedMemory)), &std::free);
    std::memset(memory.get(), 1, touchedMemory);
    compare(table, "child, start to end, from 1 GiB");
}
