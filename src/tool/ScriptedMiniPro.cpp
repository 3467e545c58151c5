// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/ScriptedMiniPro.h"

#include "base/Log.h"
#include "base/MainQueue.h"
#include "process/PipeHolders.h"
#include "process/ReadHandle.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "tool/Console.h"
#include "tool/ForeignLinks.h"
#include "tool/UserShell.h"

#include <QEventLoop>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <new>
#include <utility>
#include <variant>

namespace {

/// How many reads may be empty before the listening ends with the next one.
constexpr qint32 maxEmptyReads = 50;

/// How often something that the tool left behind is listened to: often enough to be followed, and
/// seldom enough to leave the window and the processor alone.
constexpr std::chrono::milliseconds paceAfterTheRun(100);
/// How long it may take to notice that nobody listens any more.
constexpr std::chrono::seconds graceAfterClosing(2);

QString orNull(const std::optional<QString> &value) {
    return value.value_or(loggedForNone.toString());
}

QString pathOfReport(const SettingsStore &settings) {
    return resolvedPathOf(settings, settingsKeys::temp_logic_chip_test_results_file);
}

} // namespace

ScriptedMiniPro::ScriptedMiniPro(SettingsStore &settings, Log &eventLog, MainQueue &mainQueue,
                                 QObject *parent)
    : QObject(parent),
      defaults(settings),
      plumbing_(new RunPlumbing(this)),
      log_(eventLog),
      queue_(mainQueue) {
    const ChildProcess &task = plumbing_->task;
    connect(&task, &ChildProcess::terminated, this, &ScriptedMiniPro::terminated);
    connect(&task, &ChildProcess::ended, this, &ScriptedMiniPro::childEnded);
    outFile = plumbing_->stdoutPipe.fileHandleForReading();
    errFile = plumbing_->stderrorPipe.fileHandleForReading();
    for (ReadHandle *handle : {outFile, errFile})
        handle->waitForDataInBackgroundAndNotify();
    connect(outFile, &ReadHandle::dataAvailable, this, &ScriptedMiniPro::outData);
    connect(errFile, &ReadHandle::dataAvailable, this, &ScriptedMiniPro::errData);
    // A second arming of an armed handle changes nothing.
    for (ReadHandle *handle : {outFile, errFile})
        handle->waitForDataInBackgroundAndNotify();
}

ScriptedMiniPro::~ScriptedMiniPro() {
    delete plumbing_;
}

int ScriptedMiniPro::launch() {
    reader_->setOperation(operation);
    launched_ = ToolSettings::readFrom(defaults);
    if (operation == LogicOperation)
        report_.begin(pathOfReport(defaults), log_);
    const QString command = operationCommand(operation, launched_);
    const std::optional<QString> shell = prepareShell(command);
    log_.write(QStringLiteral("launching ") + orNull(shell) + QStringLiteral(" with arguments: ") +
               shellArguments(command).join(u' '));
    const QStringList writtenFiles = operation == ReadOperation
                                         ? QStringList(launched_.readPath) + filesBesideRead_
                                         : QStringList();
    return runToTheEnd(QStringLiteral("minipro has exited with status "), writtenFiles);
}

int ScriptedMiniPro::list(const QString &term) {
    const QString path = absolutePathOf(defaults, settingsKeys::temp_search_results_file);
    mstroutput = QString();
    launched_ = ToolSettings::readFrom(defaults);
    prepareShell(catalogueCommand(launched_.tool, term, path));
    return runToTheEnd(QStringLiteral("minipro list has exited with status "), {path});
}

std::optional<QString> ScriptedMiniPro::prepareShell(const QString &command) {
    log_.write(QStringLiteral("fileContents: ") + command);
    const std::optional<QString> shell = userShell();
    log_.write(QStringLiteral("user's shell is ") + orNull(shell));
    giveToShell(plumbing_->task, command, defaults);
    return shell;
}

int ScriptedMiniPro::runToTheEnd(const QString &messageStart, const QStringList &writtenFiles) {
    tellConsole(&Console::beginRun);
    start_ = start(writtenFiles);
    if (const StartTrouble *trouble = start_.failure())
        log_.write(QStringLiteral("unable to launch task: ") + trouble->failure.reason);
    else
        waitUntilExit();
    takeWhatThePipesHold();
    outputTaken_ = true;
    for (ReadHandle *handle : {outFile, errFile})
        handle->setPace(paceAfterTheRun);
    showPendingTails();
    const int status = plumbing_->task.terminationStatus();
    const QString message = messageStart + QString::number(status);
    log_.write(u'\n' + message);
    tellConsole(&Console::endRun);
    appendToOutputView(message);
    if (!start_)
        stopListening();
    closeIfDone();
    return status;
}

// The tool and the shell open their files as they find them, and would follow a link.
Result<void, StartTrouble> ScriptedMiniPro::start(const QStringList &writtenFiles) {
    if (const Result<void, StartTrouble> links = removeForeignLinks(writtenFiles); !links)
        return links;
    const Result<void> shell = plumbing_->task.start();
    if (const Failure *failure = shell.failure())
        return StartTrouble{*failure, StartTrouble::Cause::Shell};
    return {};
}

void ScriptedMiniPro::waitUntilExit() {
    const ChildProcess &task = plumbing_->task;
    QEventLoop wait;
    connect(&task, &ChildProcess::ended, &wait, &QEventLoop::quit);
    if (!task.hasEnded())
        wait.exec();
    // An application that was told to exit ends every event loop at once; the child is still to
    // be waited for.
    while (!task.hasEnded())
        wait.processEvents(QEventLoop::WaitForMoreEvents);
}

void ScriptedMiniPro::takeWhatThePipesHold() {
    if (!listening_)
        return;
    // What a process that the tool left behind prints from now on may never end, and waits.
    completeErrorLine();
    const qint64 outputBytes = outFile->bytesAvailable();
    const qint64 errorBytes = errFile->bytesAvailable();
    takeBytes(outputBytes, outFile);
    releaseErrors();
    takeBytes(errorBytes, errFile);
}

void ScriptedMiniPro::takeBytes(qint64 count, ReadHandle *handle) {
    while (count > 0) {
        const std::optional<QByteArray> chunk = availableDataOrError(handle, count);
        if (!chunk || chunk->isEmpty())
            return;
        count -= chunk->size();
        handleChunk(handle, *chunk, mstroutput);
    }
}

void ScriptedMiniPro::outData(ReadHandle *handle) {
    appendDataFrom_to(handle, mstroutput);
    handle->waitForDataInBackgroundAndNotify();
}

void ScriptedMiniPro::errData(ReadHandle *handle) {
    appendDataFrom_to(handle, mstroutput);
    handle->waitForDataInBackgroundAndNotify();
}

void ScriptedMiniPro::appendDataFrom_to(ReadHandle *handle, QString &text) {
    if (handle == outFile)
        completeErrorLine();
    const std::optional<QByteArray> chunk = availableDataOrError(handle);
    const bool isEmpty = !chunk || chunk->isEmpty();
    setPrintingLate(handle, outputTaken_ && !isEmpty);
    if (isEmpty)
        countEmptyRead(handle);
    else if (handle == errFile && errorsMustWait())
        keepErrors(*chunk);
    else
        handleChunk(handle, *chunk, text);
    handle->waitForDataInBackgroundAndNotify();
}

std::optional<QByteArray> ScriptedMiniPro::availableDataOrError(ReadHandle *handle, qint64 limit) {
    ReadOutcome outcome = handle->availableData(limit);
    while (outcome && std::holds_alternative<ReadInterrupted>(*outcome))
        outcome = handle->availableData(limit);
    if (!outcome)
        return std::nullopt;
    auto *bytes = std::get_if<QByteArray>(&*outcome);
    return bytes ? std::move(*bytes) : QByteArray();
}

void ScriptedMiniPro::handleChunk(ReadHandle *handle, const QByteArray &chunk, QString &text) {
    const bool isError = handle == errFile;
    const ToolStream stream = isError ? ToolStream::Error : ToolStream::Output;
    show((isError ? errDecoder_ : outDecoder_).decode(chunk), stream, text);
    rows_.note(chunk, stream);
    if (operation != LogicOperation)
        return;
    report_.keep(pathOfReport(defaults), chunk, log_);
    if (handle == outFile && !rows_.errorsMustWait())
        releaseErrors();
}

void ScriptedMiniPro::show(const QString &piece, ToolStream stream, QString &text) {
    if (reader_)
        reader_->take(piece, stream);
    collect(piece, text);
    tail_.append(piece);
    appendToOutputView(piece);
    log_.write(QStringLiteral("| ") + piece);
    emit said();
}

bool ScriptedMiniPro::errorsMustWait() const {
    return operation == LogicOperation && rows_.errorsMustWait() && outFile &&
           !outFile->endSeen() && !outputTaken_;
}

void ScriptedMiniPro::keepErrors(const QByteArray &chunk) {
    rows_.keep(chunk);
    if (!rows_.errorsMustWait())
        releaseErrors();
}

void ScriptedMiniPro::releaseErrors() {
    if (const QByteArray errors = rows_.release(); !errors.isEmpty())
        handleChunk(errFile, errors, mstroutput);
}

// The tool writes one thing after the other: when output of it can be read, the rest of a line of
// errors that it began before is in the other pipe. A row that went first would be lost in that
// line. What comes into the pipe from here on is behind the output, and may never end.
void ScriptedMiniPro::completeErrorLine() {
    if (operation != LogicOperation || !rows_.errorLineComesFirst())
        return;
    QByteArray rest;
    for (qint64 left = errFile->bytesAvailable(); left > 0 && !rest.endsWith('\n'); --left) {
        const std::optional<QByteArray> byte = availableDataOrError(errFile, 1);
        if (!byte || byte->isEmpty())
            break;
        rest.append(*byte);
    }
    if (!rest.isEmpty())
        handleChunk(errFile, rest, mstroutput);
}

void ScriptedMiniPro::setPrintingLate(ReadHandle *handle, bool printing) {
    const bool before = stillPrinting();
    if (printing)
        latePrinters_.insert(handle);
    else
        latePrinters_.remove(handle);
    if (stillPrinting() != before)
        emit stillPrintingChanged(stillPrinting());
}

void ScriptedMiniPro::countEmptyRead(ReadHandle *handle) {
    if (handle == outFile)
        releaseErrors();
    repeatEndsOnceAllIsSaid();
    if (empty_data_count++ >= maxEmptyReads)
        stopListening();
}

// The end of a stream can be read again and again. While the tool lives, or something that it left
// behind has the other stream open, that would only use up the empty reads and end the listening
// too early.
void ScriptedMiniPro::repeatEndsOnceAllIsSaid() {
    if (!plumbing_ || !plumbing_->task.hasEnded() || !outFile->endSeen() || !errFile->endSeen())
        return;
    outFile->allowRepeatedEnd();
    errFile->allowRepeatedEnd();
}

void ScriptedMiniPro::showPendingTails() {
    if (const QString tail = outDecoder_.flush(); !tail.isEmpty())
        show(tail, ToolStream::Output, mstroutput);
    if (const QString tail = errDecoder_.flush(); !tail.isEmpty())
        show(tail, ToolStream::Error, mstroutput);
}

void ScriptedMiniPro::stopListening() {
    if (!listening_)
        return;
    listening_ = false;
    releaseErrors();
    disconnect(outFile, nullptr, this, nullptr);
    disconnect(errFile, nullptr, this, nullptr);
    disconnect(&plumbing_->task, &ChildProcess::terminated, this, nullptr);
    showPendingTails();
    for (ReadHandle *handle : {outFile, errFile})
        setPrintingLate(handle, false);
    closeIfDone();
}

// The child's group is not signalled: it may have ended with the child, and its number may be
// another's by now. A process that writes to a pipe that nobody reads is ended by the system; one
// that has seen to it that it is not is found by the pipe that it holds. One with a session of its
// own, such as an agent that a login profile starts, was meant to outlive the run.
void ScriptedMiniPro::endLatePrinters() {
    const QList<PipeIdentity> pipes = plumbing_->outputPipes();
    const pid_t session = plumbing_->task.session();
    stopListening();
    QTimer::singleShot(graceAfterClosing, this,
                       [pipes, session] { killHoldersOf(pipes, session); });
}

void ScriptedMiniPro::childEnded() {
    repeatEndsOnceAllIsSaid();
    closeIfDone();
}

void ScriptedMiniPro::closeIfDone() {
    if (listening_ || !plumbing_ || plumbing_->task.isRunning())
        return;
    plumbing_->closeOutput();
    if (outputTaken_)
        givePlumbingBack();
}

// Later, since this may run in a signal of what goes.
void ScriptedMiniPro::givePlumbingBack() {
    end_ = plumbing_->childEnd();
    outFile = nullptr;
    errFile = nullptr;
    filesBesideRead_.clear();
    std::exchange(plumbing_, nullptr)->deleteLater();
}

void ScriptedMiniPro::terminated() {
    log_.write(QStringLiteral("Task terminated"));
    terminated_ = 1;
}

void ScriptedMiniPro::appendToOutputView(const QString &text) {
    tellConsole([text](Console &console) { console.appendText(text); });
}

void ScriptedMiniPro::tellConsole(std::function<void(Console &)> what) {
    queue_.async([guard = QPointer(this), what = std::move(what)] {
        const ScriptedMiniPro *run = guard.data();
        if (run && run->outputView_)
            what(*run->outputView_);
    });
}

void ScriptedMiniPro::stop() {
    if (stillPrinting())
        endLatePrinters();
    else if (plumbing_)
        plumbing_->task.stop();
}

// The program, with what the user has edited, must not end because a tool is talkative.
void ScriptedMiniPro::collect(const QString &piece, QString &text) {
    if (!collecting_)
        return;
    const qsizetype room = std::max(largestCollected - text.size(), qsizetype(0));
    try {
        text.append(QStringView(piece).first(std::min(room, piece.size())));
    } catch (const std::bad_alloc &) {
        collecting_ = false;
    }
}

void ScriptedMiniPro::releaseOutput() {
    collecting_ = false;
    mstroutput = QString();
    tail_.release();
    reader_.reset();
}

RunFacts ScriptedMiniPro::facts() const {
    RunFacts facts;
    facts.operation = operation;
    facts.tool = launched_.tool;
    facts.device = launched_.device;
    if (takesImage(operation))
        facts.imagePath = launched_.outputPath;
    facts.start = start_;
    const ChildEnd end = plumbing_ ? plumbing_->childEnd() : end_;
    facts.status = end.status;
    facts.killedBySignal = end.killedBySignal;
    facts.stopRequested = end.stopRequested;
    if (reader_)
        facts.report = reader_->report();
    return facts;
}
