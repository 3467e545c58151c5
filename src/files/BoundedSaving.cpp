// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/BoundedSaving.h"

#include "files/DiskFlush.h"
#include "files/FileSaving.h"
#include "files/UnfinishedFile.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <system_error>
#include <thread>
#include <tuple>
#include <utility>

namespace {

/// How long the end of the program waits for the disk: nobody looks at a window any more, and a
/// session that ends waits for all its programs.
constexpr std::chrono::seconds patienceAtTheEnd(1);
/// How often to look whether a slow disk has answered: soon enough for a sentence.
constexpr std::chrono::milliseconds betweenLooks(100);

void closeElsewhere(FileDescriptor file) {
    try {
        std::thread([file = std::move(file)] {}).detach();
    } catch (const std::system_error &) {
        // It is closed here then.
    }
}

} // namespace

BoundedSaving::BoundedSaving(QObject *parent) : QObject(parent) {
    looking_.setInterval(betweenLooks);
    connect(&looking_, &QTimer::timeout, this, &BoundedSaving::lookAgain);
}

// What the disk has not taken by then the system gives to it, whether this program runs or not, and
// nobody is left to be told of a refusal.
BoundedSaving::~BoundedSaving() {
    const QDeadlineTimer deadline(patienceAtTheEnd);
    while (asked_.valid() && diskHasAnswered(deadline))
        std::ignore = answer();
}

Result<void> BoundedSaving::save(const QString &path, const QByteArray &bytes,
                                 QDeadlineTimer deadline) {
    // What it refused before is made anew with what is saved now.
    if (isBusy() && diskHasAnswered(QDeadlineTimer(0)))
        isRefused_ = !answer();
    Result<UnfinishedFile> file = unfinishedFile(path, bytes, Durability::ProgramEnd);
    if (!file)
        return *file.failure();
    FileDescriptor copy(::fcntl(file->descriptor(), F_DUPFD_CLOEXEC, 0));
    if (!copy.isOpen())
        return Failure::ofSystem(errno);
    const bool isNext = isBusy();
    FileDescriptor waiting;
    if (isNext) {
        waiting = std::move(copy);
    } else {
        if (const Result<void> asked = askDisk(std::move(copy)); !asked)
            return asked;
        if (diskHasAnswered(deadline))
            if (const Result<void> answered = answer(); !answered)
                return answered;
    }
    // A rename, too, can wait for bytes that the disk has not taken yet.
    const Result<void> placed =
        file->takePlace(isBusy() ? Durability::ProgramEnd : Durability::PowerFailure);
    if (placed) {
        if (isNext)
            next_ = std::move(waiting);
        placeIsTaken(*file);
    } else if (!isNext) {
        asked_ = {};
    }
    return placed;
}

void BoundedSaving::placeIsTaken(UnfinishedFile &file) {
    isRefused_ = false;
    // Or the copy would lock the file at its place for as long as the disk needs.
    ::flock(file.descriptor(), LOCK_UN);
    if (!isBusy())
        return;
    looking_.start();
    // Some file systems, those of other machines among them, have closing wait for the disk as
    // well.
    closeElsewhere(file.takeDescriptor());
}

// No call that asks the disk can be bounded, so it is made in a thread of its own. That has a
// descriptor and nothing else, and nobody need wait for its end.
Result<void> BoundedSaving::askDisk(FileDescriptor file) {
    std::packaged_task<Result<void>()> task(
        [file = std::move(file)] { return flushToDisk(file.get()); });
    asked_ = task.get_future();
    try {
        std::thread(std::move(task)).detach();
    } catch (const std::system_error &error) {
        asked_ = {};
        return Failure::ofSystem(error.code().value());
    }
    return {};
}

bool BoundedSaving::diskHasAnswered(QDeadlineTimer deadline) const {
    return asked_.wait_for(deadline.remainingTimeAsDuration()) == std::future_status::ready;
}

// A file that waits to be flushed has the place of the one that was: what became of that plays no
// part any more.
Result<void> BoundedSaving::answer() {
    const Result<void> answer = asked_.get();
    if (next_.isOpen())
        return askDisk(std::exchange(next_, FileDescriptor()));
    return answer;
}

void BoundedSaving::lookAgain() {
    // A save in between may have taken the answer.
    if (!isBusy())
        return looking_.stop();
    if (!diskHasAnswered(QDeadlineTimer(0)))
        return;
    const Result<void> answered = answer();
    if (isBusy())
        return;
    looking_.stop();
    isRefused_ = !answered;
    if (const Failure *failure = answered.failure())
        emit refused(*failure);
    else
        emit confirmed();
}
