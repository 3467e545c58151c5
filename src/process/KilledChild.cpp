// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "process/KilledChild.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <cerrno>
#include <chrono>
#include <sys/wait.h>
#include <thread>

namespace {

/// Most end within a thousandth of a second.
constexpr std::chrono::milliseconds patienceWithKilled(100);
constexpr std::chrono::milliseconds napBetweenLooks(1);
constexpr std::chrono::milliseconds laterLooks(100);

/// True if it was reaped in time.
bool isReapedSoon(pid_t pid, const Reaping &reaping) {
    const QDeadlineTimer deadline(patienceWithKilled);
    while (!reaping(pid)) {
        if (deadline.hasExpired())
            return false;
        std::this_thread::sleep_for(napBetweenLooks);
    }
    return true;
}

} // namespace

bool reapIfEnded(pid_t pid) {
    const pid_t reaped = ::waitpid(pid, nullptr, WNOHANG);
    return reaped == pid || (reaped < 0 && errno == ECHILD);
}

// Nobody waits at the program's end: what it leaves behind then, the system reaps.
void reapKilled(pid_t pid, const Reaping &reaping) {
    if (isReapedSoon(pid, reaping) || !QCoreApplication::instance())
        return;
    auto *looking = new QTimer(QCoreApplication::instance());
    QObject::connect(looking, &QTimer::timeout, looking, [looking, pid, reaping] {
        if (!reaping(pid))
            return;
        looking->stop();
        looking->deleteLater();
    });
    looking->start(laterLooks);
}
