#include "Output.h"

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

} // namespace

void say(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            return;
    }
}

std::string hex(std::uint64_t value, int digits) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "0x%0*llX", digits,
                  static_cast<unsigned long long>(value));
    return text.data();
}

void spend(std::chrono::milliseconds time, Pace pace) {
    if (pace == Pace::Real)
        std::this_thread::sleep_for(time);
}

std::string StopWatch::text() const {
    return durationText(std::chrono::steady_clock::now() - start_, Dialect::Release);
}

ProgressLine::ProgressLine(std::string_view counting, std::string_view finished, Pace chosenPace)
    : countingLabel_(std::string(lineStart) + std::string(counting)),
      finishedLabel_(std::string(lineStart) + std::string(finished)),
      pace_(chosenPace) {}

void ProgressLine::update(std::size_t done, std::size_t total) {
    constexpr std::size_t whole = 100;
    std::array<char, 16> percentage{};
    std::snprintf(percentage.data(), percentage.size(), "%2zu%%", done * whole / total);
    say(countingLabel_);
    say(percentage.data());
    spend(blockTime, pace_);
}

void ProgressLine::finish() {
    say(finishedLabel_);
    say(watch_.text() + "  OK\n");
}

ProgressLine readingProgress(Pace pace) {
    return {"Reading Code...  ", "Reading Code...  ", pace};
}

ProgressLine writingProgress(Pace pace) {
    // The tool pads the counting label alone.
    return {"Writing  Code...  ", "Writing Code...  ", pace};
}

} // namespace sim
