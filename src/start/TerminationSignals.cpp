// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "start/TerminationSignals.h"

#include "base/PipeEnds.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace {

/// A signal handler may do little more than write to a descriptor; this is the one.
int lentWakeUpEnd = -1;
constexpr std::array<int, 3> handledSignals = {SIGTERM, SIGINT, SIGHUP};
/// What each of the signals did before.
std::array<struct sigaction, handledSignals.size()> foundActions = {};

extern "C" void noteSignal(int) {
    const int saved = errno;
    const char one = 1;
    std::ignore = ::write(lentWakeUpEnd, &one, 1);
    errno = saved;
}

/// A signal that the starter has turned off (nohup, or a shell that starts a program in the
/// background) is not meant for this program.
void takeOver() {
    struct sigaction action = {};
    action.sa_handler = noteSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < handledSignals.size(); ++i) {
        ::sigaction(handledSignals[i], nullptr, &foundActions[i]);
        if (foundActions[i].sa_handler != SIG_IGN)
            ::sigaction(handledSignals[i], &action, nullptr);
    }
}

void giveBack() {
    for (std::size_t i = 0; i < handledSignals.size(); ++i)
        ::sigaction(handledSignals[i], &foundActions[i], nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent) : QObject(parent) {
    Result<PipeEnds> ends = PipeEnds::open();
    if (!ends)
        return;
    for (const FileDescriptor *end : {&ends->reading, &ends->writing})
        ::fcntl(end->get(), F_SETFL, O_NONBLOCK);
    readingEnd_ = std::move(ends->reading);
    wakeUpEnd_ = std::move(ends->writing);
    lentWakeUpEnd = wakeUpEnd_.get();
    notifier_ = new QSocketNotifier(readingEnd_.get(), QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &TerminationSignals::drain);
    takeOver();
}

TerminationSignals::~TerminationSignals() {
    if (!notifier_)
        return;
    giveBack();
    delete notifier_;
    lentWakeUpEnd = -1;
}

void TerminationSignals::drain() {
    std::array<char, 16> bytes = {};
    const ssize_t count = ::read(readingEnd_.get(), bytes.data(), bytes.size());
    for (ssize_t i = 0; i < count; ++i)
        emit received();
}
