#include "app/TerminationSignals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

// A signal handler may do little more than write to a descriptor.
int wakeUpEnd = -1;
int readingEnd = -1;
constexpr std::array<int, 3> handledSignals = {SIGTERM, SIGINT, SIGHUP};

extern "C" void noteSignal(int) {
    const int saved = errno;
    const char one = 1;
    [[maybe_unused]] const ssize_t written = ::write(wakeUpEnd, &one, 1);
    errno = saved;
}

void setDisposition(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int number : handledSignals)
        ::sigaction(number, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent) : QObject(parent) {
    std::array<int, 2> ends = {-1, -1};
    if (::pipe(ends.data()) != 0)
        return;
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    readingEnd = ends[0];
    wakeUpEnd = ends[1];
    notifier_ = new QSocketNotifier(readingEnd, QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &TerminationSignals::drain);
    setDisposition(noteSignal);
}

TerminationSignals::~TerminationSignals() {
    setDisposition(SIG_DFL);
    delete notifier_;
    ::close(readingEnd);
    ::close(wakeUpEnd);
}

void TerminationSignals::drain() {
    std::array<char, 16> bytes = {};
    const ssize_t count = ::read(readingEnd, bytes.data(), bytes.size());
    for (ssize_t i = 0; i < count; ++i)
        emit received();
}
