// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "setup/Environment.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace sim {

/// Writes `text` to standard error at once: banner, progress, verdicts and errors go there
/// unbuffered. What cannot be written is lost, as it is for the tool.
void say(std::string_view text);

/// Sleeps for `time` at the real pace, not at all at the instant one.
void spend(std::chrono::milliseconds time, Pace pace);

/// The time since its making, in the words of a dialect.
class StopWatch {
public:
    explicit StopWatch(Dialect dialect);
    [[nodiscard]] std::string text() const;

private:
    Dialect dialect_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// The line on standard error that counts a transfer up and is replaced in the end by the time it
/// took. The release counts when a block begins, from 0 % on, in two writes: the label and then
/// the percentage. The newer tool counts in one write when a block has ended, up to 100 %.
class ProgressLine {
public:
    /// `activity` is "Reading" or "Writing", `section` the memory: "Code".
    ProgressLine(std::string_view activity, std::string_view section,
                 const Environment &environment);

    /// Block number `block` of `blocks`, counted from 0.
    void beginBlock(std::size_t block, std::size_t blocks);
    void endBlock(std::size_t block, std::size_t blocks);
    void finish();

private:
    std::string countingLabel_;
    std::string finishedLabel_;
    Dialect dialect_;
    Pace pace_;
    StopWatch watch_;
};

/// The line of a step that counts nothing: its label, and behind it in the end the time it took.
class StepLine {
public:
    /// `gap` stands between the time and "OK" in the release.
    StepLine(std::string_view label, std::string_view gap, Dialect dialect);
    void finish();

private:
    std::string label_;
    std::string gap_;
    Dialect dialect_;
    StopWatch watch_;
};

} // namespace sim
