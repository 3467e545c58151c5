#pragma once

#include "Environment.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace sim {

/// Writes `text` to standard error at once: banner, progress, verdicts and errors go there
/// unbuffered. What cannot be written is lost, as it is for the tool.
void say(std::string_view text);

/// `value` in upper-case hexadecimal with "0x" and at least `digits` digits.
std::string hex(std::uint64_t value, int digits);

/// Sleeps for `time` at the real pace, not at all at the instant one.
void spend(std::chrono::milliseconds time, Pace pace);

/// The time since its making as the tool prints it: "0.13Sec".
class StopWatch {
public:
    [[nodiscard]] std::string text() const;

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// The line on standard error that counts a transfer up from 0 % and is replaced in the end by
/// the time it took. One update is two writes, the label and then the percentage.
class ProgressLine {
public:
    /// `counting` stands before the percentages, `finished` before the time.
    ProgressLine(std::string_view counting, std::string_view finished, Pace pace);

    /// Shows that `done` of `total` blocks lie behind; `done` is less than `total`.
    void update(std::size_t done, std::size_t total);
    void finish();

private:
    std::string countingLabel_;
    std::string finishedLabel_;
    Pace pace_;
    StopWatch watch_;
};

ProgressLine readingProgress(Pace pace);
ProgressLine writingProgress(Pace pace);

} // namespace sim
