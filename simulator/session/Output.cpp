// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "session/Output.h"

#include "session/Durations.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <thread>

#include <unistd.h>

namespace sim {
namespace {

constexpr std::chrono::milliseconds blockTime{10};
constexpr std::string_view lineStart = "\r\x1b[K";

std::string percentage(std::size_t done, std::size_t total) {
    constexpr std::size_t whole = 100;
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%2zu%%", done * whole / total);
    return text.data();
}

} // namespace

void say(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(std::size_t(written));
        else if (errno != EINTR)
            return;
    }
}

void spend(std::chrono::milliseconds time, Pace pace) {
    if (pace == Pace::Real)
        std::this_thread::sleep_for(time);
}

StopWatch::StopWatch(Dialect dialect) : dialect_(dialect) {}

std::string StopWatch::text() const {
    return durationText(std::chrono::steady_clock::now() - start_, dialect_);
}

ProgressLine::ProgressLine(std::string_view activity, std::string_view section,
                           const Environment &environment)
    : finishedLabel_(std::string(lineStart) + std::string(activity) + ' ' + std::string(section) +
                     "...  "),
      dialect_(environment.dialect),
      pace_(environment.pace),
      watch_(environment.dialect) {
    countingLabel_ = finishedLabel_;
    // The release pads the counting label of a write alone.
    if (dialect_ == Dialect::Release && activity == "Writing")
        countingLabel_.insert(countingLabel_.find(' '), " ");
}

void ProgressLine::beginBlock(std::size_t block, std::size_t blocks) {
    if (dialect_ == Dialect::Release) {
        say(countingLabel_);
        say(percentage(block, blocks));
    }
    spend(blockTime, pace_);
}

void ProgressLine::endBlock(std::size_t block, std::size_t blocks) {
    if (dialect_ == Dialect::New)
        say(countingLabel_ + percentage(block + 1, blocks));
}

void ProgressLine::finish() {
    say(finishedLabel_);
    say(watch_.text() + "  OK\n");
}

StepLine::StepLine(std::string_view label, std::string_view gap, Dialect dialect)
    : label_(label), gap_(gap), dialect_(dialect), watch_(dialect) {
    if (dialect_ == Dialect::New)
        label_.insert(0, lineStart);
    say(label_);
}

void StepLine::finish() {
    if (dialect_ == Dialect::New)
        say(label_ + watch_.text() + "  OK\n");
    else
        say(watch_.text() + gap_ + "OK\n");
}

} // namespace sim
