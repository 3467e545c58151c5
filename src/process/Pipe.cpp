// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "process/Pipe.h"

#include "base/PipeEnds.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int firstOrdinaryDescriptor = STDERR_FILENO + 1;

/// A program started with a standard stream closed gets its number for the first thing it opens;
/// such an end would be overwritten while the child's streams are put in place.
Result<FileDescriptor> aboveStandardStreams(FileDescriptor end) {
    if (end.get() >= firstOrdinaryDescriptor)
        return end;
    FileDescriptor copy(::fcntl(end.get(), F_DUPFD_CLOEXEC, firstOrdinaryDescriptor));
    if (!copy.isOpen())
        return Failure::ofSystem(errno);
    return copy;
}

} // namespace

Pipe::Pipe(Direction towards) : direction_(towards) {}

Result<void> Pipe::open() {
    if (child_.isOpen() && own_.isOpen())
        return {};
    Result<PipeEnds> ends = PipeEnds::open();
    if (!ends)
        return *ends.failure();
    Result<FileDescriptor> reading = aboveStandardStreams(std::move(ends->reading));
    if (!reading)
        return *reading.failure();
    Result<FileDescriptor> writing = aboveStandardStreams(std::move(ends->writing));
    if (!writing)
        return *writing.failure();
    const bool fromChild = direction_ == Direction::FromChild;
    own_ = std::move(fromChild ? *reading : *writing);
    child_ = std::move(fromChild ? *writing : *reading);
    if (fromChild)
        handle_.attach(own_.get());
    return {};
}

int Pipe::childEnd() const {
    return child_.get();
}

int Pipe::ownEnd() const {
    return own_.get();
}

void Pipe::closeChildEnd() {
    child_.close();
}

void Pipe::closeOwnEnd() {
    handle_.detach();
    own_.close();
}

ReadHandle *Pipe::fileHandleForReading() {
    return &handle_;
}
