#include "DesktopProgram.h"

#include "Memory.h"
#include "Peers.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <unistd.h>
#include <unordered_map>

namespace {

constexpr double patienceMilliseconds = 20'000;
constexpr useconds_t pollMicroseconds = 500;
constexpr double quietMilliseconds = 150;
constexpr uint16_t comparedWidth = 1024;
constexpr uint16_t comparedHeight = 700;
/// A window whose background alone is there has one or two colours; smooth letters bring many.
constexpr size_t coloursOfAFrame = 12;
/// The share of pixels that are not background, which a page of text has and an empty one has not.
constexpr double inkOfAPage = 0.05;
constexpr xcb_keysym_t pageDownKey = 0xFF56;

std::vector<std::string> environmentIn(const std::string &folder) {
    return {"QT_QPA_PLATFORM", "WAYLAND_DISPLAY",
            "XDG_CONFIG_HOME", "XDG_DATA_HOME",
            "XDG_CACHE_HOME",  "XDG_STATE_HOME",
            "HOME=" + folder,  "XDG_RUNTIME_DIR=" + folder + "/runtime"};
}

double inkShare(const std::vector<uint32_t> &pixels) {
    std::unordered_map<uint32_t, size_t> counts;
    size_t most = 0;
    for (const uint32_t pixel : pixels)
        most = std::max(most, ++counts[pixel]);
    return pixels.empty() ? 0 : 1 - double(most) / double(pixels.size());
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
                 [this] { return inkShare(display_.pixels(window_, page())) >= inkOfAPage; });
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
        return quiet.milliseconds() > quietMilliseconds;
    });
}

// A part of the page, large enough for a cursor that blinks there not to count.
PixelArea DesktopProgram::page() {
    const PixelArea all = display_.geometry(window_);
    return {static_cast<int16_t>(all.width * pageLeft_), static_cast<int16_t>(all.height * 2 / 5),
            static_cast<uint16_t>(all.width / 5), static_cast<uint16_t>(all.height / 5)};
}

double DesktopProgram::until(const std::string &what,
                             const std::function<bool()> &condition) const {
    const Stopwatch patience;
    while (!condition()) {
        if (patience.milliseconds() > patienceMilliseconds)
            throw std::runtime_error("the program never shows " + what);
        usleep(pollMicroseconds);
    }
    return sinceStart_.milliseconds();
}
