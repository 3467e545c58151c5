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
/// session that ends waits for all its programs. Two files are saved like this, each of which
/// waits: a dead disk takes a second.
constexpr std::chrono::milliseconds patienceAtTheEnd(500);
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
    Result<FileDescriptor> folder = openFolder(file->folder());
    if (const Failure *failure = folder.failure())
        return *failure;
    const Result<void> saved =
        isBusy() ? saveNext(*file, std::move(copy), *std::move(folder))
                 : saveAtOnce(*file, std::move(copy), *std::move(folder), deadline);
    if (saved)
        placeIsTaken(*file);
    return saved;
}

Result<void> BoundedSaving::saveNext(UnfinishedFile &file, FileDescriptor copy,
                                     FileDescriptor folder) {
    const Result<void> placed = file.takePlace();
    if (placed) {
        next_ = std::move(copy);
        nextFolder_ = std::move(folder);
    }
    return placed;
}

Result<void> BoundedSaving::saveAtOnce(UnfinishedFile &file, FileDescriptor copy,
                                       FileDescriptor folder, QDeadlineTimer deadline) {
    Result<void> asked = askAboutFile(std::move(copy));
    if (asked)
        asked = answerUntil(deadline);
    if (!asked)
        return asked;
    if (const Result<void> placed = file.takePlace(); !placed) {
        asked_ = {};
        return placed;
    }
    if (isBusy()) {
        nextFolder_ = std::move(folder);
        return {};
    }
    asked = askAboutFolder(std::move(folder));
    if (asked)
        asked = answerUntil(deadline);
    // What cannot be put back goes: the bytes of before are those that are in use.
    if (!asked)
        std::ignore = file.giveBackPlace();
    return asked;
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

Result<void> BoundedSaving::askAboutFile(FileDescriptor file) {
    return ask(std::packaged_task<Result<void>()>(
        [file = std::move(file)] { return flushToDisk(file.get()); }));
}

Result<void> BoundedSaving::askAboutFolder(FileDescriptor folder) {
    return ask(std::packaged_task<Result<void>()>(
        [folder = std::move(folder)] { return flushFolder(folder); }));
}

// No call that asks the disk can be bounded, so it is made in a thread of its own. That has a
// descriptor and nothing else, and nobody need wait for its end.
Result<void> BoundedSaving::ask(std::packaged_task<Result<void>()> question) {
    asked_ = question.get_future();
    try {
        std::thread(std::move(question)).detach();
    } catch (const std::system_error &error) {
        asked_ = {};
        return Failure::ofSystem(error.code().value());
    }
    return {};
}

// What the disk has answered; no failure while it has not.
Result<void> BoundedSaving::answerUntil(QDeadlineTimer deadline) {
    if (!diskHasAnswered(deadline))
        return {};
    return answer();
}

bool BoundedSaving::diskHasAnswered(QDeadlineTimer deadline) const {
    return asked_.wait_for(deadline.remainingTimeAsDuration()) == std::future_status::ready;
}

// A file that waits to be flushed has the place of the one that was: what became of that plays no
// part any more.
Result<void> BoundedSaving::answer() {
    const Result<void> answer = asked_.get();
    if (next_.isOpen()) {
        const Result<void> asked = askAboutFile(std::exchange(next_, FileDescriptor()));
        if (!asked)
            nextFolder_.close();
        return asked;
    }
    FileDescriptor folder = std::exchange(nextFolder_, FileDescriptor());
    if (answer && folder.isOpen())
        return askAboutFolder(std::move(folder));
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
