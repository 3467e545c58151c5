// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "subjects/DesktopProgram.h"

#include "instruments/Memory.h"
#include "subjects/Peers.h"

#include <cstdlib>
#include <set>
#include <stdexcept>
#include <thread>

namespace {

constexpr std::chrono::seconds patience(20);
constexpr std::chrono::microseconds pollInterval(500);
constexpr std::chrono::milliseconds quietTime(150);
constexpr uint16_t comparedWidth = 1024;
constexpr uint16_t comparedHeight = 700;
/// A window whose background alone is there has one or two colours; smooth letters bring many.
constexpr size_t coloursOfAFrame = 12;
constexpr int strongEdge = 64;
constexpr double edgesOfAPage = 0.05;
constexpr xcb_keysym_t pageDownKey = 0xFF56;

/// The same for all: a home without anybody's settings.
std::vector<std::string> environmentIn(const std::string &folder) {
    return {"QT_QPA_PLATFORM", "WAYLAND_DISPLAY",
            "XDG_CONFIG_HOME", "XDG_DATA_HOME",
            "XDG_CACHE_HOME",  "XDG_STATE_HOME",
            "HOME=" + folder,  "XDG_RUNTIME_DIR=" + folder + "/runtime"};
}

int greenOf(uint32_t pixel) {
    constexpr int greenShift = 8;
    return int((pixel >> greenShift) & 0xFF);
}

/// How many pixels differ much from the one before them. Letters have such edges; an empty page, a
/// waiting sign or one page that fades into another have hardly any.
double edgeShare(const std::vector<uint32_t> &pixels) {
    size_t edges = 0;
    for (size_t index = 1; index < pixels.size(); ++index)
        if (std::abs(greenOf(pixels[index]) - greenOf(pixels[index - 1])) > strongEdge)
            ++edges;
    return pixels.empty() ? 0 : double(edges) / double(pixels.size());
}

} // namespace

DesktopProgram::DesktopProgram(XDisplay &display, const ProgramStart &start,
                               const std::string &folder)
    : display_(display),
      pageLeft_(start.pageLeft),
      pid_(startCommand(start.words, environmentIn(folder))) {}

DesktopProgram::~DesktopProgram() {
    endCommand(pid_);
}

double DesktopProgram::untilFirstFrame() {
    return until("its window", [this] {
        const auto window = display_.programWindow();
        if (!window)
            return false;
        window_ = *window;
        PixelArea all = display_.geometry(window_);
        all.x = all.y = 0;
        const auto pixels = display_.pixels(window_, all);
        return std::set<uint32_t>(pixels.begin(), pixels.end()).size() >= coloursOfAFrame;
    });
}

double DesktopProgram::untilPage() {
    return until("a page",
                 [this] { return edgeShare(display_.pixels(window_, page())) >= edgesOfAPage; });
}

double DesktopProgram::pageDown() {
    const auto before = display_.pixels(window_, page());
    const Stopwatch stopwatch;
    display_.press(pageDownKey);
    until("another page", [&] { return display_.pixels(window_, page()) != before; });
    const double taken = stopwatch.milliseconds();
    settle();
    return taken;
}

double DesktopProgram::memory() const {
    return memoryOfProcess(pid_);
}

void DesktopProgram::placeAndClick() {
    display_.place(window_, comparedWidth, comparedHeight);
    settle();
    display_.clickInto(window_);
    settle();
}

void DesktopProgram::settle() {
    auto last = display_.pixels(window_, page());
    Stopwatch quiet;
    until("rest", [&] {
        auto now = display_.pixels(window_, page());
        if (now != last) {
            last = std::move(now);
            quiet.restart();
        }
        return quiet.isBeyond(quietTime);
    });
}

// A part of the page, large enough for a cursor that blinks there not to count.
PixelArea DesktopProgram::page() {
    const PixelArea all = display_.geometry(window_);
    return {int16_t(all.width * pageLeft_), int16_t(all.height * 2 / 5), uint16_t(all.width / 5),
            uint16_t(all.height / 5)};
}

double DesktopProgram::until(const std::string &what,
                             const std::function<bool()> &condition) const {
    const Stopwatch waiting;
    while (!condition()) {
        if (waiting.isBeyond(patience))
            throw std::runtime_error("the program never shows " + what);
        std::this_thread::sleep_for(pollInterval);
    }
    return sinceStart_.milliseconds();
}
