// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "session/Misbehaviour.h"

#include "session/Output.h"

#include <csignal>
#include <string_view>
#include <thread>

#include <chrono>
#include <cstddef>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace sim {
namespace {

/// Long enough that the reader takes what came before on its own.
constexpr std::chrono::milliseconds betweenPieces{30};
constexpr std::chrono::milliseconds lifeAfterClosing{300};

/// Cuts a character of two, of three and of four bytes in their middle.
void saySplitCharacters() {
    for (const std::string_view piece : {"Pr\xc3",
                                         "\xbc"
                                         "f \xe2\x82",
                                         "\xac \xf0\x9f", "\x92\xa1\n"}) {
        say(piece);
        std::this_thread::sleep_for(betweenPieces);
    }
}

[[noreturn]] void waitForEver() {
    for (;;)
        pause();
}

[[noreturn]] void countForEver(const Environment &environment) {
    constexpr std::size_t total = 100;
    ProgressLine progress("Reading", "Code", environment);
    for (std::size_t block = 0;; block = (block + 1) % total) {
        progress.beginBlock(block, total);
        progress.endBlock(block, total);
    }
}

/// The descriptors stay taken, so that no file opened later becomes standard output.
void closeOutputs() {
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    close(nowhere);
    std::this_thread::sleep_for(lifeAfterClosing);
}

void leaveGrandchild(std::chrono::milliseconds life) {
    const pid_t grandchild = fork();
    if (grandchild == 0) {
        std::this_thread::sleep_for(life);
        say("The background process ends.\n");
        _exit(0);
    }
    say("Background process " + std::to_string(grandchild) + " keeps the pipes open.\n");
}

} // namespace

void misbehaveAtStart(const Environment &environment) {
    if (environment.has(Fault::IgnoresSigterm))
        std::signal(SIGTERM, SIG_IGN);
}

void saySerialCode(const Environment &environment) {
    say("Serial code: ");
    if (environment.has(Fault::SplitUtf8))
        saySplitCharacters();
    else if (environment.has(Fault::InvalidUtf8))
        say("AB\xff\xfe"
            "CD\xc3(EF\xe2\x82\n");
    else
        say("ABCDEFGHIJKLMNOPQRST\n");
}

void misbehaveAfterBanner(const Environment &environment) {
    if (environment.has(Fault::LeavesGrandchild))
        leaveGrandchild(environment.grandchildLife);
    if (environment.has(Fault::EndlessOutput))
        countForEver(environment);
    if (environment.has(Fault::Silent) || environment.has(Fault::IgnoresSigterm))
        waitForEver();
    if (environment.has(Fault::ClosesOutputEarly))
        closeOutputs();
}

} // namespace sim
