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

ReadHandle::ReadHandle(QObject *parent) : QObject(parent), readFunction(::read) {
    heldBackTimer.setInterval(heldBackInterval);
    connect(&heldBackTimer, &QTimer::timeout, this, &ReadHandle::updateNotifier);
}

ReadHandle::~ReadHandle() = default;

void ReadHandle::waitForDataInBackgroundAndNotify() {
    armed = true;
    updateNotifier();
}

ReadOutcome ReadHandle::availableData(qint64 limit) {
    QByteArray bytes(static_cast<qsizetype>(std::clamp(limit, qint64(1), largestChunk)),
                     Qt::Uninitialized);
    const ssize_t count = readFunction(source, bytes.data(), static_cast<size_t>(bytes.size()));
    if (count > 0) {
        bytes.truncate(count);
        return bytes;
    }
    if (count < 0)
        return errno == EINTR ? ReadOutcome(ReadInterrupted{}) : ReadOutcome(ReadFailed{errno});
    endSeen = true;
    updateNotifier();
    return EndOfFile{};
}

qint64 ReadHandle::bytesAvailable() const {
    int count = 0;
    if (source < 0 || ::ioctl(source, FIONREAD, &count) != 0)
        return 0;
    return count;
}

void ReadHandle::holdBack(qint64 bytes) {
    heldBack = true;
    heldBackBytes = bytes;
    updateNotifier();
}

void ReadHandle::letGo() {
    heldBack = false;
    updateNotifier();
}

void ReadHandle::allowRepeatedEnd() {
    repeatedEndAllowed = true;
    updateNotifier();
}

void ReadHandle::attach(int descriptor) {
    source = descriptor;
    ::fcntl(source, F_SETFL, ::fcntl(source, F_GETFL) | O_NONBLOCK);
    notifier = std::make_unique<QSocketNotifier>(source, QSocketNotifier::Read);
    connect(notifier.get(), &QSocketNotifier::activated, this, &ReadHandle::notify);
    updateNotifier();
}

void ReadHandle::detach() {
    heldBackTimer.stop();
    source = -1;
    if (!notifier)
        return;
    // This may run inside the notifier's own signal.
    notifier->setEnabled(false);
    notifier.release()->deleteLater();
}

void ReadHandle::setReadFunction(ReadFunction function) {
    readFunction = std::move(function);
}

void ReadHandle::notify() {
    // Somebody who ran since the event was found may have emptied the pipe.
    if (!armed || !isReadable())
        return;
    armed = false;
    updateNotifier();
    emit dataAvailable(this);
}

void ReadHandle::updateNotifier() {
    if (!notifier)
        return;
    const bool wanted = armed && (!endSeen || repeatedEndAllowed);
    const bool waits = wanted && heldBack && bytesAvailable() < heldBackBytes;
    notifier->setEnabled(wanted && !waits);
    if (!waits)
        heldBackTimer.stop();
    else if (!heldBackTimer.isActive())
        heldBackTimer.start();
}

bool ReadHandle::isReadable() const {
    pollfd question{.fd = source, .events = POLLIN, .revents = 0};
    return ::poll(&question, 1, 0) > 0;
}
