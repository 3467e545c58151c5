#include "tool/ReadHandle.h"

#include <QSocketNotifier>

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>

namespace {

/// How often a handle that is held back looks whether too much is waiting.
constexpr auto heldBackInterval = std::chrono::milliseconds(20);

} // namespace

ReadHandle::ReadHandle(QObject *parent) : QObject(parent), readFunction_(::read) {
    heldBackTimer_.setInterval(heldBackInterval);
    connect(&heldBackTimer_, &QTimer::timeout, this, &ReadHandle::updateNotifier);
}

ReadHandle::~ReadHandle() = default;

void ReadHandle::waitForDataInBackgroundAndNotify() {
    armed_ = true;
    updateNotifier();
}

ReadOutcome ReadHandle::availableData(qint64 limit) {
    QByteArray bytes(static_cast<qsizetype>(std::clamp(limit, qint64(1), largestChunk)),
                     Qt::Uninitialized);
    const ssize_t count = readFunction_(source_, bytes.data(), static_cast<size_t>(bytes.size()));
    if (count > 0) {
        bytes.truncate(count);
        return bytes;
    }
    if (count < 0)
        return errno == EINTR ? ReadOutcome(ReadInterrupted{}) : ReadOutcome(ReadFailed{errno});
    endSeen_ = true;
    updateNotifier();
    return EndOfFile{};
}

qint64 ReadHandle::bytesAvailable() const {
    int count = 0;
    if (source_ < 0 || ::ioctl(source_, FIONREAD, &count) != 0)
        return 0;
    return count;
}

void ReadHandle::holdBack(qint64 bytes) {
    heldBack_ = true;
    heldBackBytes_ = bytes;
    updateNotifier();
}

void ReadHandle::letGo() {
    heldBack_ = false;
    updateNotifier();
}

void ReadHandle::allowRepeatedEnd() {
    repeatedEndAllowed_ = true;
    updateNotifier();
}

void ReadHandle::attach(int descriptor) {
    source_ = descriptor;
    ::fcntl(source_, F_SETFL, ::fcntl(source_, F_GETFL) | O_NONBLOCK);
    notifier_ = std::make_unique<QSocketNotifier>(source_, QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, &ReadHandle::notify);
    updateNotifier();
}

void ReadHandle::detach() {
    heldBackTimer_.stop();
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
    // Somebody who ran since the event was found may have emptied the pipe.
    if (!armed_ || !isReadable())
        return;
    armed_ = false;
    updateNotifier();
    emit dataAvailable(this);
}

void ReadHandle::updateNotifier() {
    if (!notifier_)
        return;
    const bool wanted = armed_ && (!endSeen_ || repeatedEndAllowed_);
    const bool waits = wanted && heldBack_ && bytesAvailable() < heldBackBytes_;
    notifier_->setEnabled(wanted && !waits);
    if (!waits)
        heldBackTimer_.stop();
    else if (!heldBackTimer_.isActive())
        heldBackTimer_.start();
}

bool ReadHandle::isReadable() const {
    pollfd question{.fd = source_, .events = POLLIN, .revents = 0};
    return ::poll(&question, 1, 0) > 0;
}
