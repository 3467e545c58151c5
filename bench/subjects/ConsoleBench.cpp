// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/LoopWatch.h"
#include "instruments/Painted.h"
#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/Peers.h"
#include "subjects/RawChild.h"
#include "subjects/Samples.h"
#include "subjects/ToolRunFolder.h"

#include "base/FileDescriptor.h"
#include "base/Log.h"
#include "base/MainQueue.h"
#include "tool/ScriptedMiniPro.h"
#include "widgets/ConsoleView.h"

#include <QCoreApplication>
#include <QTextBlock>

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <stdexcept>

namespace {

constexpr qint64 linesSize = 64 * mebibyte;
constexpr qint64 progressSize = 8 * mebibyte;
constexpr qint64 terminalSize = 8 * mebibyte;
constexpr int rounds = 5;
constexpr int terminalRounds = 3;
constexpr QSize viewSize(1024, 420);
constexpr double maxLoopGap = 50;
constexpr double maxOfXterm = 1.0 / 8;
constexpr std::chrono::minutes patience(2);

/// Does what the program's log does, into nowhere.
class NullDeviceLog final : public Log {
public:
    void write(const QString &text) override {
        if (!writeAll(device_.get(), text.toUtf8() + '\n'))
            throw std::runtime_error("nothing can be written into nowhere");
    }

private:
    const FileDescriptor device_{::open("/dev/null", O_WRONLY | O_CLOEXEC)};
};

/// A console in a window, and runs of a tool that prints a file.
class ConsoleRuns {
public:
    ConsoleRuns() {
        qputenv("SHELL", "/bin/sh");
        console_.resize(viewSize);
        showPainted(console_);
    }

    /// Makes the tool print the bytes of a file.
    void printFile(const QByteArray &output) {
        const QString file = folder_.path(QStringLiteral("output"));
        writeFile(file, output);
        folder_.useTool("exec cat '" + file.toUtf8() + "'\n");
    }
    /// Makes the tool count up in place.
    void printProgress(qint64 size) {
        folder_.useTool("exec '" VELM_BENCH_PROGRESS "' " + QByteArray::number(size) + '\n');
    }
    std::string outputPath() const { return folder_.path(QStringLiteral("output")).toStdString(); }

    /// From the start of the run until the console shows its last line.
    double showRun() {
        console_.clearAll();
        QCoreApplication::processEvents();
        ScriptedMiniPro run(folder_.settings(), log_, queue_);
        run.setOutputView(&console_);
        loop_.restart();
        const Stopwatch stopwatch;
        if (run.launch() != 0)
            throw std::runtime_error("the tool run failed");
        while (!showsTheEnd()) {
            QCoreApplication::processEvents();
            if (stopwatch.isBeyond(patience))
                throw std::runtime_error("the console never shows the end");
        }
        console_.viewport()->repaint();
        const double taken = stopwatch.milliseconds();
        gaps_.push_back(loop_.longestGap());
        return taken;
    }

    /// The same child through the same shell, into the bin.
    double drainRun() const {
        const Stopwatch stopwatch;
        runRawChild({"/bin/sh", "-l", "-c", folder_.toolCommand()});
        return stopwatch.milliseconds();
    }

    /// The longest gap of the event loop in any run since forgetGaps().
    double longestGap() const { return *std::max_element(gaps_.begin(), gaps_.end()); }
    void forgetGaps() { gaps_.clear(); }

private:
    bool showsTheEnd() const {
        return console_.document()->lastBlock().text().contains(u"minipro has exited");
    }

    ToolRunFolder folder_;
    NullDeviceLog log_;
    MainQueue queue_;
    ConsoleView console_;
    LoopWatch loop_;
    std::vector<double> gaps_;
};

std::string rate(qint64 bytes, double milliseconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%.0f MB/s", double(bytes) / 1e6 / (milliseconds / 1e3));
    return text;
}

void compareWithDrain(Table &table, ConsoleRuns &runs, const std::string &what, qint64 size) {
    runs.forgetGaps();
    const auto medians =
        interleaved(rounds, {[&] { return runs.showRun(); }, [&] { return runs.drainRun(); }});
    table.compare(what, milliseconds(medians[0]), {"bare drain", milliseconds(medians[1])},
                  std::nullopt, rate(size, medians[0]));
    table.limit(what + ", longest loop gap", milliseconds(runs.longestGap()),
                milliseconds(maxLoopGap));
}

/// At the console's size: letters of 21 points, about as many pixels.
std::vector<std::string> xtermWords(const std::string &program, const std::string &file) {
    return {program, "-fa", "DejaVu Sans Mono", "-fs", "21", "-geometry", "60x13", "-sl",
            "10000", "-e",  "/bin/cat",         file};
}

void compareWithXterm(Table &table, ConsoleRuns &runs) {
    const std::string what = "console, 8 MiB of lines";
    const std::string program = findProgram("xterm");
    if (program.empty())
        return table.gap(what, "xterm", "not installed");
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        return table.gap(what, "xterm", "no X display");
    runs.printFile(asciiText(terminalSize));
    const auto medians = interleaved(
        terminalRounds, {[&] { return runs.showRun(); },
                         [&] { return runCommand(xtermWords(program, runs.outputPath())).wall; }});
    table.compare(what, milliseconds(medians[0]), {"xterm", milliseconds(medians[1])}, maxOfXterm,
                  rate(terminalSize, medians[0]));
}

} // namespace

void benchConsole(Table &table) {
    ConsoleRuns runs;
    runs.printFile(asciiText(linesSize));
    compareWithDrain(table, runs, "console, 64 MiB of lines", linesSize);
    runs.printProgress(progressSize);
    compareWithDrain(table, runs, "console, 8 MiB of progress", progressSize);
    compareWithXterm(table, runs);
    table.gap("console, lines", "VTE", "its terminals do not end with the command that they show");
}
