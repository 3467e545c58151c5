// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"
#include "language/CommandLine.h"
#include "language/RunOutcome.h"
#include "language/ToolReportReader.h"
#include "process/OutputDecoder.h"
#include "process/ReadHandle.h"
#include "tool/OutputTail.h"
#include "tool/ResultsFile.h"
#include "tool/RunPlumbing.h"
#include "tool/WholeRows.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class Console;
class Log;
class MainQueue;
class SettingsStore;

/// One run of the programmer tool through the user's login shell. Everything that the tool prints
/// is collected, logged and shown on the console while the caller waits; chip contents never pass
/// through here, the tool reads and writes them as files.
///
/// An object is good for one run: launch() or list(), once. Keep it afterwards, because something
/// that the tool left running may still print. A run that is never started holds no descriptor.
class ScriptedMiniPro final : public QObject {
    Q_OBJECT

public:
    /// How many runs whoever keeps them makes room for at first.
    static constexpr qsizetype expectedRuns = 10;

    /// The most of a run's output that is collected, in characters: 4 MiB of memory, many times
    /// what the tool ever has to say.
    static constexpr qsizetype largestCollected = 4 * mebibyte / qsizetype(sizeof(QChar));

    /// Listens for output and for the child's end from here on; nothing is started. The settings
    /// are read at the moment of use. \a settings, \a eventLog and \a mainQueue must live longer
    /// than this object.
    ScriptedMiniPro(SettingsStore &settings, Log &eventLog, MainQueue &mainQueue,
                    QObject *parent = nullptr);
    ~ScriptedMiniPro() override;

    /// Choose what launch() does; the last call counts, and without one it is a Read.
    void setReadOperation() { operation = ReadOperation; }
    void setVerifyOperation() { operation = VerifyOperation; }
    void setWriteOperation() { operation = WriteOperation; }
    void setLogicOperation() { operation = LogicOperation; }

    /// The console that shows the output, or null (nothing is shown). It must live longer than this
    /// run: the window that it stands in is taken down after whoever owns the runs.
    Console *outputView() const { return outputView_; }
    void setOutputView(Console *console) { outputView_ = console; }

    /// Runs the chosen operation and returns its status once the child has been reaped, keeping
    /// the event loop turning meanwhile: the exit code, the number of the signal that killed the
    /// child, or -1 if it could not be started. The exit message is the last thing appended.
    /// A link of somebody else where a Read would write is removed; if it cannot be, nothing is
    /// started.
    int launch();

    /// Leaves the names of the devices that match \a term in the search results file; waits and
    /// returns like launch().
    int list(const QString &term);

    /// Ends the run: the child's whole group is asked to terminate and killed two seconds later.
    /// launch() returns when the child is gone. After the run, ends what still prints: the pipes
    /// are closed, and whatever of the child's session still holds one two seconds later is killed.
    /// Otherwise does nothing.
    void stop();

    /// True if something that the tool left behind has printed after the run and has not ended its
    /// output since.
    bool stillPrinting() const { return !latePrinters_.isEmpty(); }
    /// What both streams have printed, in the order of arrival, up to largestCollected: the piece
    /// that would pass it is cut there, and later pieces are shown and logged but no longer
    /// collected. The same holds once there is no memory for more. Empty after releaseOutput().
    const QString &collectedOutput() const { return mstroutput; }
    /// The end of all that both streams have printed, for the record of the run: at most
    /// OutputTail::largest characters. Empty after releaseOutput().
    QString saidTail() const { return tail_.text(); }
    /// How many characters both streams have printed.
    qint64 printed() const { return tail_.printed(); }
    /// Gives the memory of what was said back. To be called after the run, once saidTail() and
    /// facts() have been taken: runs are kept for as long as the program lives. The whole is on the
    /// console; so is what arrives later, from something that the tool left running.
    void releaseOutput();
    /// What the run itself knows of what became of it, for judgeRun(); to be asked after it. The
    /// image, and which programmers are plugged in, are for the caller to add. After
    /// releaseOutput() their report is empty.
    RunFacts facts() const;
    /// Whether the results file of a logic test holds all that was printed, and if not, why.
    const Result<void, ReportTrouble> &reportWritten() const { return report_.written(); }
    /// What the chip is known to hold besides its code memory, for judging the run.
    const KnownMemories &knownMemories() const { return knownMemories_; }
    void setKnownMemories(const KnownMemories &known) { knownMemories_ = known; }
    /// The files that the tool may write beside the one that a Read asks for, by path.
    void setFilesBesideRead(const QStringList &paths) { filesBesideRead_ = paths; }
    /// How far the run has come, as the tool tells; changes with said().
    RunProgress progress() const { return reader_ ? reader_->progress() : RunProgress(); }

    /// Output is waiting (or has ended) on \a handle: takes one chunk and listens again.
    void outData(ReadHandle *handle);
    void errData(ReadHandle *handle);
    /// Reads one chunk from \a handle and hands it on: to \a text, console, log and, in a logic
    /// test, to the results file. The 51st chunk without a byte ends the listening for good.
    void appendDataFrom_to(ReadHandle *handle, QString &text);
    /// The bytes that \a handle has now, none at end of file; nothing if reading failed. A read
    /// interrupted by a signal is tried again for as long as it takes. At most \a limit bytes.
    std::optional<QByteArray> availableDataOrError(ReadHandle *handle,
                                                   qint64 limit = ReadHandle::largestChunk);
    /// The child has ended.
    void terminated();
    /// Queues \a text for the end of the console, exactly as it is. What is still queued when this
    /// object goes is not shown.
    void appendToOutputView(const QString &text);

signals:
    /// The tool has said something: facts() may hold more.
    void said();
    /// stillPrinting() has become \a printing.
    void stillPrintingChanged(bool printing);

private:
    void handleChunk(ReadHandle *handle, const QByteArray &chunk, QString &text);
    void setPrintingLate(ReadHandle *handle, bool printing);
    void countEmptyRead(ReadHandle *handle);
    void repeatEndsOnceAllIsSaid();
    void show(const QString &piece, ToolStream stream, QString &text);
    bool errorsMustWait() const;
    void keepErrors(const QByteArray &chunk);
    void releaseErrors();
    void completeErrorLine();
    void stopListening();
    void endLatePrinters();
    void childEnded();
    void closeIfDone();
    void givePlumbingBack();

    void collect(const QString &piece, QString &text);
    std::optional<QString> prepareShell(const QString &command);
    int runToTheEnd(const QString &messageStart, const QStringList &writtenFiles);
    Result<void, StartTrouble> start(const QStringList &writtenFiles);
    void waitUntilExit();
    void takeWhatThePipesHold();
    void takeBytes(qint64 count, ReadHandle *handle);
    void showPendingTails();
    void tellConsole(std::function<void(Console &)> what);

    SettingsStore &defaults;
    /// Null once it has been given back.
    RunPlumbing *plumbing_ = nullptr;
    ReadHandle *outFile = nullptr;
    ReadHandle *errFile = nullptr;
    /// Stays empty: the tool is never told anything.
    [[maybe_unused]] std::optional<int> stdinHandle;
    QString mstroutput;
    qint32 empty_data_count = 0;
    qint32 terminated_ = 0;
    Operation operation = ReadOperation;
    /// The settings as they were when the tool was started.
    ToolSettings launched_;
    Result<void, StartTrouble> start_;
    ReportKeeper report_;
    ChildEnd end_;
    /// Null once it has been given back.
    std::unique_ptr<ToolReportReader> reader_ = std::make_unique<ToolReportReader>();
    KnownMemories knownMemories_;
    QStringList filesBesideRead_;
    bool collecting_ = true;
    OutputTail tail_;
    Console *outputView_ = nullptr;

    Log &log_;
    MainQueue &queue_;
    OutputDecoder outDecoder_;
    OutputDecoder errDecoder_;
    WholeRows rows_;
    bool listening_ = true;
    /// What the pipes held when the child ended has been taken; what comes now is of others.
    bool outputTaken_ = false;
    QSet<ReadHandle *> latePrinters_;
};
