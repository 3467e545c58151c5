// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "process/ReadHandle.h"

#include <QSocketNotifier>

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

ReadHandle::ReadHandle(QObject *parent) : QObject(parent), readFunction_(::read) {
    pause_.setSingleShot(true);
    pause_.setTimerType(Qt::PreciseTimer);
    connect(&pause_, &QTimer::timeout, this, &ReadHandle::updateNotifier);
}

ReadHandle::~ReadHandle() = default;

void ReadHandle::waitForDataInBackgroundAndNotify() {
    armed_ = true;
    updateNotifier();
}

ReadOutcome ReadHandle::availableData(qint64 limit) {
    QByteArray bytes(qsizetype(std::clamp(limit, qint64(1), largestChunk)), Qt::Uninitialized);
    const ssize_t count = readFunction_(source_, bytes.data(), size_t(bytes.size()));
    if (count > 0) {
        bytes.truncate(count);
        return {std::move(bytes)};
    }
    if (count < 0 && errno == EINTR)
        return {ReadInterrupted{}};
    if (count < 0)
        return Failure::ofSystem(errno);
    endSeen_ = true;
    updateNotifier();
    return {EndOfFile{}};
}

qint64 ReadHandle::bytesAvailable() const {
    int count = 0;
    if (source_ < 0 || ::ioctl(source_, FIONREAD, &count) != 0)
        return 0;
    return count;
}

void ReadHandle::allowRepeatedEnd() {
    repeatedEndAllowed_ = true;
    updateNotifier();
}

void ReadHandle::setPace(std::chrono::milliseconds interval) {
    pause_.setInterval(interval);
}

void ReadHandle::attach(int descriptor) {
    source_ = descriptor;
    ::fcntl(source_, F_SETFL, ::fcntl(source_, F_GETFL) | O_NONBLOCK);
    notifier_ = std::make_unique<QSocketNotifier>(source_, QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, &ReadHandle::notify);
    updateNotifier();
}

void ReadHandle::detach() {
    source_ = -1;
    if (!notifier_)
        return;
    // This may run inside the notifier's own signal.
    notifier_->setEnabled(false);
    notifier_.release()->deleteLater();
}

void ReadHandle::setReadFunction(ReadFunction function) {
    readFunction_ = std::move(function);
}

void ReadHandle::notify() {
    // Code that ran since the event was found may have emptied the pipe.
    if (!armed_ || !isReadable())
        return;
    armed_ = false;
    if (pause_.interval() > 0)
        pause_.start();
    updateNotifier();
    emit dataAvailable(this);
}

void ReadHandle::updateNotifier() {
    if (notifier_)
        notifier_->setEnabled(endSeen_ ? armed_ && repeatedEndAllowed_
                                       : armed_ && !pause_.isActive());
}

bool ReadHandle::isReadable() const {
    pollfd question{.fd = source_, .events = POLLIN, .revents = 0};
    return ::poll(&question, 1, 0) > 0;
}
