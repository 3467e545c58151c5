// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// Stands in for the programmer tool in tests. The first argument names the behaviour; the others
// are what a run would give the tool.

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

namespace {

constexpr const char *goOnFile = "go-on";
constexpr const char *allSaidFile = "all-said";

void say(int stream, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(stream, text.data(), text.size());
        if (written > 0)
            text.remove_prefix(size_t(written));
        else if (errno != EINTR)
            _exit(99);
    }
}

void takeABreath() {
    const timespec moment{0, 1'000'000};
    nanosleep(&moment, nullptr);
}

/// Waits until the reader has emptied the pipe, so that the next write is a read of its own.
void waitUntilTaken(int stream) {
    int waiting = 1;
    while (ioctl(stream, FIONREAD, &waiting) == 0 && waiting > 0)
        takeABreath();
}

/// Ends this process if the test is over and has removed the working folder.
void endWithTheTest() {
    struct stat facts {};
    if (stat(".", &facts) != 0 || facts.st_nlink == 0)
        _exit(97);
}

/// Waits until the test makes the file in the working folder.
void waitToGoOn() {
    struct stat facts {};
    while (stat(goOnFile, &facts) != 0) {
        endWithTheTest();
        takeABreath();
    }
}

/// Tells the test that there is nothing more to wait for.
void makeAllSaidFile() {
    close(open(allSaidFile, O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
}

[[noreturn]] void hang() {
    for (;;)
        pause();
}

int succeed() {
    say(2, "Found TL866II+ 04.2.132 (0x284)\n");
    say(2, "\r\x1b[KReading Code...   0%");
    say(2, "\r\x1b[KReading Code...  0.13Sec  OK\n");
    return 0;
}

int crash() {
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    say(2, "about to crash\n");
    raise(SIGABRT);
    return 0;
}

int megabyte() {
    say(1, std::string(1024 * 1024, 'x'));
    return 0;
}

int emojiBeforeTheTail() {
    // Half of the emoji's two units would be the first of the last 32 Ki.
    say(1, "\xf0\x9f\x98\x80" + std::string(32 * 1024 - 1, 'x'));
    return 0;
}

int endless() {
    for (;;)
        say(1, "one more line of an output without an end\n");
}

int splitCharacter() {
    say(1, "caf\xc3");
    waitUntilTaken(1);
    say(2, "between, ");
    waitUntilTaken(2);
    say(1, "\xa9");
    return 0;
}

/// Says its number, and when that has been taken much more than one read takes; then ends at once.
int leaveMuchInThePipe() {
    constexpr int size = 1024 * 1024;
    if (fcntl(1, F_SETPIPE_SZ, size) < size)
        return 96;
    say(1, std::to_string(getpid()) + "\n");
    waitUntilTaken(1);
    say(1, std::string(size, 'x'));
    return 0;
}

int printWhenLetOn() {
    waitToGoOn();
    say(1, "after all");
    return 0;
}

int closeOutputEarly() {
    say(1, "last words");
    close(1);
    close(2);
    waitToGoOn();
    return 3;
}

/// Leaves a process behind that prints on \a stream once the test lets it; nobody has \a closed
/// open then. The tool itself ends at once.
int leaveGrandchild(int stream, int closed = -1) {
    say(1, "parent done");
    close(closed);
    if (fork() == 0) {
        waitToGoOn();
        say(stream, "late words");
        _exit(0);
    }
    return 0;
}

/// Leaves a process behind that prints for ever, and says which. A stubborn one cannot be asked to
/// end, by a signal or by a closed pipe.
int leaveFlood(bool stubborn) {
    const pid_t child = fork();
    if (child == 0) {
        if (stubborn)
            for (const int number : {SIGPIPE, SIGTERM, SIGHUP})
                signal(number, SIG_IGN);
        for (;;) {
            if (write(1, "on and on\n", 10) > 0)
                continue;
            endWithTheTest();
            takeABreath();
        }
    }
    say(2, std::to_string(child) + "\n");
    return 0;
}

/// As leaveFlood() with a stubborn one, and in front of it the number of a process that holds the
/// streams in silence, in a session of its own, as an agent that a login profile starts.
int leaveAgentAndFlood() {
    const pid_t child = fork();
    if (child == 0) {
        setsid();
        waitToGoOn();
        makeAllSaidFile();
        _exit(0);
    }
    while (getsid(child) != child)
        takeABreath();
    say(2, "agent " + std::to_string(child) + "\n");
    return leaveFlood(true);
}

/// A process of the same group that neither hears SIGTERM nor ends.
int deafGrandchild() {
    signal(SIGTERM, SIG_IGN);
    const pid_t child = fork();
    if (child == 0)
        hang();
    signal(SIGTERM, SIG_DFL);
    say(1, std::to_string(child) + "\n");
    hang();
}

int ignoreTerminate() {
    signal(SIGTERM, SIG_IGN);
    say(1, "deaf\n");
    hang();
}

/// A table whose first block ends inside a row; the verdict comes on the other stream before the
/// rest of the row.
int logicTest() {
    say(1, "      1  2  \n0000: 0  H");
    waitUntilTaken(1);
    say(2, "Logic test failed: 1 errors encountered.\n");
    say(1, "  \n0001: 1  L- \n");
    return 1;
}

/// More errors than may wait for the row to end, and one more when the row has gone on.
int logicFlood() {
    say(1, "0000: 0  H");
    waitUntilTaken(1);
    say(2, std::string(48 * 1024, 'e'));
    waitUntilTaken(2);
    say(2, "and more");
    waitUntilTaken(2);
    say(1, "  H");
    waitUntilTaken(1);
    say(2, "verdict\n");
    waitUntilTaken(2);
    say(1, "  \n");
    return 0;
}

/// An error within a row that never ends; the tool ends when the test lets it.
int logicWithinRow() {
    say(1, "0000: 0  H");
    waitUntilTaken(1);
    say(2, "verdict\n");
    waitUntilTaken(2);
    makeAllSaidFile();
    waitToGoOn();
    return 0;
}

/// An error within a row that never ends, and a process that stays: it has more errors to tell, and
/// keeps both streams open.
int logicLeavesGrandchild() {
    say(1, "0000: 0  H");
    waitUntilTaken(1);
    say(2, "verdict\n");
    waitUntilTaken(2);
    if (fork() == 0) {
        waitToGoOn();
        say(2, "late words");
        for (;; takeABreath())
            endWithTheTest();
    }
    return 0;
}

/// Errors within a row, more than their pipe can take: the system may hand out small ones.
int logicSmallPipe() {
    fcntl(2, F_SETPIPE_SZ, 4096);
    say(1, "0000: 0  H");
    waitUntilTaken(1);
    say(2, std::string(6000, 'e') + "\n");
    say(1, "  \n");
    return 0;
}

/// A table that breaks off inside a row, and errors that follow when no row can any more.
int logicBrokenOff() {
    say(1, "0000: 0  H");
    waitUntilTaken(1);
    say(2, "first\n");
    waitUntilTaken(2);
    close(1);
    waitToGoOn();
    return 0;
}

int logicBothStreams() {
    say(1, "0000: caf\xc3");
    waitUntilTaken(1);
    say(1, "\xa9 \xff\n");
    waitUntilTaken(1);
    say(2, "verdict\n");
    return 0;
}

/// A line of errors that comes in two reads, and a table that is there by the second.
int logicSplitError() {
    say(2, "Serial code: ");
    waitUntilTaken(2);
    say(2, "ABCD\nUSB speed: 12Mbps\n");
    say(1, "      1  2  \n0000: 0  H  \n");
    say(2, "Logic test successful.\n");
    makeAllSaidFile();
    return 0;
}

int describeInput() {
    pollfd question{0, POLLIN, 0};
    say(1, poll(&question, 1, 0) == 0 ? "open and empty" : "closed or filled");
    return 0;
}

/// The standard streams aside, which descriptors came along, and which signals are not as a
/// freshly started program expects them.
int describeInheritance() {
    std::string text = getsid(0) == getpid() ? "own session" : "no session of its own";
    for (int descriptor = 3; descriptor < 256; ++descriptor)
        if (fcntl(descriptor, F_GETFD) >= 0)
            text += ", descriptor " + std::to_string(descriptor);
    sigset_t blocked;
    sigprocmask(SIG_BLOCK, nullptr, &blocked);
    for (const int number : {SIGPIPE, SIGTERM, SIGINT, SIGCHLD, SIGTTOU, SIGXFSZ}) {
        struct sigaction action {};
        sigaction(number, nullptr, &action);
        if (action.sa_handler == SIG_IGN)
            text += ", ignored " + std::to_string(number);
        if (sigismember(&blocked, number))
            text += ", blocked " + std::to_string(number);
    }
    say(1, text);
    return 0;
}

int describeFolder() {
    char path[4096] = {};
    say(1, getcwd(path, sizeof path) ? path : "nowhere");
    return 0;
}

int listDevices(int count, char **words) {
    for (int i = 2; i < count; ++i)
        say(1, std::string(words[i]) + "\n");
    say(2, "listed\n");
    return 0;
}

/// Makes the file that a Read is to fill.
int readChip(int count, char **words) {
    for (int i = 2; i + 1 < count; ++i)
        if (std::string_view(words[i]) == "-r")
            return open(words[i + 1], O_WRONLY | O_CREAT | O_CLOEXEC, 0600) >= 0 ? 0 : 1;
    return 1;
}

struct Behaviour {
    const char *name;
    int (*act)();
};

constexpr Behaviour behaviours[] = {
    {"succeed", succeed},
    {"say-nothing", [] { return 0; }},
    {"fail", [] { return say(2, "No programmer found.\n"), 1; }},
    {"status-42", [] { return 42; }},
    {"crash", crash},
    {"hang", []() -> int { hang(); }},
    {"ignore-terminate", ignoreTerminate},
    {"megabyte", megabyte},
    {"emoji-before-the-tail", emojiBeforeTheTail},
    {"endless", endless},
    {"leave-much-in-the-pipe", leaveMuchInThePipe},
    {"print-when-let-on", printWhenLetOn},
    {"invalid-text",
     [] {
         return say(1, "a\xff"
                       "b\xe2\x82"
                       "c\xe2\x82"),
                0;
     }},
    {"mark-first", [] { return say(1, "\xef\xbb\xbfmark"), 0; }},
    {"split-character", splitCharacter},
    {"close-output-early", closeOutputEarly},
    {"leave-grandchild", [] { return leaveGrandchild(1); }},
    {"leave-grandchild-on-output", [] { return leaveGrandchild(1, 2); }},
    {"leave-grandchild-on-error", [] { return leaveGrandchild(2, 1); }},
    {"leave-flood", [] { return leaveFlood(false); }},
    {"leave-stubborn-flood", [] { return leaveFlood(true); }},
    {"leave-agent-and-flood", leaveAgentAndFlood},
    {"deaf-grandchild", deafGrandchild},
    {"logic-test", logicTest},
    {"logic-flood", logicFlood},
    {"logic-within-row", logicWithinRow},
    {"logic-leaves-grandchild", logicLeavesGrandchild},
    {"logic-small-pipe", logicSmallPipe},
    {"logic-broken-off", logicBrokenOff},
    {"logic-both-streams", logicBothStreams},
    {"logic-split-error", logicSplitError},
    {"describe-input", describeInput},
    {"describe-inheritance", describeInheritance},
    {"describe-folder", describeFolder},
};

} // namespace

int main(int count, char **words) {
    const std::string_view name = count > 1 ? words[1] : "";
    if (name == "list")
        return listDevices(count, words);
    if (name == "read-chip")
        return readChip(count, words);
    for (const Behaviour &behaviour : behaviours)
        if (name == behaviour.name)
            return behaviour.act();
    std::fprintf(stderr, "no behaviour is called \"%s\"\n", words[1]);
    return 98;
}
