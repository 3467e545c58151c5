#include "Programmer.h"

#include "Output.h"
#include "files/ImageFile.h"

#include <algorithm>

namespace sim {
namespace {

constexpr std::size_t badAddress = 0x1234;
constexpr std::uint8_t allBits = 0xFF;
constexpr std::chrono::milliseconds shortestErase{20};
constexpr std::chrono::milliseconds erasePerMebibyte{2500};
constexpr std::chrono::seconds saveInterval{1};

std::size_t blockCount(std::size_t size, std::size_t block) {
    return (size + block - 1) / block;
}

std::chrono::milliseconds eraseTime(const Chip &chip) {
    constexpr std::size_t mebibyte = std::size_t{1024} * 1024;
    return shortestErase + erasePerMebibyte * chip.size / mebibyte;
}

/// What an empty socket answers: every bit is one.
std::uint64_t emptyAnswer(int digits) {
    constexpr int bitsPerDigit = 4;
    return (std::uint64_t{1} << (bitsPerDigit * digits)) - 1;
}

std::size_t roundedUp(std::size_t size, std::size_t block) {
    return (size + block - 1) / block * block;
}

SizeMismatch mismatchOf(const Options &options) {
    if (options.hideSizeWarning)
        return SizeMismatch::Hidden;
    return options.ignoreSizeMismatch ? SizeMismatch::Warned : SizeMismatch::Refused;
}

} // namespace

Outcome reportOvercurrent(bool inLine) {
    say(inLine ? "\nOvercurrent protection!\a\n" : "Overcurrent protection!\a\n");
    return Outcome::Failed;
}

Outcome reportUnplugged() {
    say("\nIO error: bulk_transfer: LIBUSB_ERROR_NO_DEVICE\n");
    return Outcome::Failed;
}

Programmer::Programmer(const Chip &socketChip, const Options &commandLine,
                       const Environment &surroundings)
    : chip_(socketChip),
      options_(commandLine),
      environment_(surroundings),
      bench_(surroundings.bench, surroundings.firstContent),
      cells_(bench_.load(socketChip)) {}

Outcome Programmer::checkId() {
    if (!chip_.id)
        return Outcome::Good;
    const std::string expected = hex(chip_.id->value, chip_.id->digits);
    if (!environment_.has(Fault::WrongId)) {
        say("Chip ID: " + expected + "  OK\n");
        return Outcome::Good;
    }
    const std::string mismatch = "expected " + expected + ", got " +
                                 hex(emptyAnswer(chip_.id->digits), chip_.id->digits) +
                                 " (unknown)\n";
    if (options_.ignoreIdMismatch) {
        say("WARNING: Chip ID mismatch: " + mismatch);
        return Outcome::Good;
    }
    say("Invalid Chip ID: " + mismatch + "(use '-y' to continue anyway at your own risk)\n");
    return Outcome::Failed;
}

Outcome Programmer::read() {
    OutputFile file(options_.file);
    const auto content = readCells(chip_.size);
    if (!content)
        return Outcome::Failed;
    file.fill(*content);
    return Outcome::Good;
}

Outcome Programmer::verify() {
    const auto image = loadFile();
    return image ? compare(*image, chip_.size) : Outcome::Failed;
}

Outcome Programmer::write() {
    if (chip_.protection == Protection::Software)
        say("Use -P if you want to write-protect this chip.\n");
    const Outcome outcome = writeAndVerify();
    if (outcome == Outcome::Failed && chip_.protection == Protection::Software)
        say("This chip may be write-protected. Use -u and try again.\n");
    return outcome;
}

Outcome Programmer::writeAndVerify() {
    auto image = loadFile();
    if (!image)
        return Outcome::Failed;
    image->resize(std::min(roundedUp(image->size(), readBlock(chip_)), chip_.size), erasedByte);
    takeOffProtection();
    if (!options_.skipErase && erasesInSocket(chip_) && eraseCells() == Outcome::Failed)
        return Outcome::Failed;
    if (program(*image) == Outcome::Failed)
        return Outcome::Failed;
    return compare(*image, image->size());
}

Outcome Programmer::erase() {
    if (!erasesInSocket(chip_)) {
        say("This chip can't be erased!\n");
        return Outcome::Failed;
    }
    takeOffProtection();
    return eraseCells();
}

std::optional<Bytes> Programmer::loadFile() const {
    const auto loaded = loadImage(options_.file, chip_.size, mismatchOf(options_));
    if (const auto *refused = std::get_if<ImageRefused>(&loaded)) {
        say(refused->message);
        return std::nullopt;
    }
    const auto &image = std::get<Image>(loaded);
    say(image.notes);
    return image.bytes;
}

Outcome Programmer::eraseCells() {
    say("Erasing... ");
    const StopWatch watch;
    if (environment_.has(Fault::Overcurrent))
        return reportOvercurrent(true);
    spend(eraseTime(chip_), environment_.pace);
    if (!writeProtected())
        std::fill(cells_.begin(), cells_.end(), erasedByte);
    bench_.store(chip_, cells_);
    say(watch.text() + " OK\n");
    return Outcome::Good;
}

Outcome Programmer::program(const Bytes &image) {
    const std::size_t page = writePage(chip_);
    const std::size_t pages = blockCount(image.size(), page);
    ProgressLine progress = writingProgress(environment_.pace);
    for (std::size_t i = 0; i < pages; ++i) {
        progress.update(i, pages);
        if (fails(i, pages)) {
            bench_.store(chip_, cells_);
            return Outcome::Failed;
        }
        if (!writeProtected())
            programPage(image, i * page, std::min(page, image.size() - i * page));
        saveNowAndThen();
    }
    progress.finish();
    bench_.store(chip_, cells_);
    return Outcome::Good;
}

void Programmer::programPage(const Bytes &image, std::size_t start, std::size_t length) {
    for (std::size_t i = start; i < start + length; ++i)
        cells_[i] = writeReplaces(chip_) ? image[i] : cells_[i] & image[i];
}

std::optional<Bytes> Programmer::readCells(std::size_t length) const {
    const std::size_t blocks = blockCount(length, readBlock(chip_));
    ProgressLine progress = readingProgress(environment_.pace);
    for (std::size_t i = 0; i < blocks; ++i) {
        progress.update(i, blocks);
        if (fails(i, blocks))
            return std::nullopt;
    }
    progress.finish();
    Bytes content = cells_;
    if (environment_.has(Fault::BadByte))
        content[badAddress % chip_.size] ^= allBits;
    content.resize(length);
    return content;
}

Outcome Programmer::compare(const Bytes &image, std::size_t readLength) const {
    const auto content = readCells(readLength);
    if (!content)
        return Outcome::Failed;
    const auto [expected, found] = std::mismatch(image.begin(), image.end(), content->begin());
    if (expected == image.end()) {
        say("Verification OK\n");
        return Outcome::Good;
    }
    const auto address = static_cast<std::size_t>(expected - image.begin());
    say("Verification failed at address " + hex(address, 4) + ": File=" + hex(*expected, 2) +
        ", Device=" + hex(*found, 2) + "\n");
    return Outcome::Failed;
}

bool Programmer::fails(std::size_t block, std::size_t blocks) const {
    if (environment_.has(Fault::Overcurrent))
        return reportOvercurrent(true) == Outcome::Failed;
    if (environment_.has(Fault::Unplugged) && block == blocks / 2)
        return reportUnplugged() == Outcome::Failed;
    return false;
}

bool Programmer::writeProtected() const {
    return environment_.has(Fault::Protected) && chip_.protection == Protection::Software &&
           !unlocked_;
}

void Programmer::takeOffProtection() {
    if (!options_.unprotect || chip_.protection == Protection::None)
        return;
    say("Protect off...OK\n");
    unlocked_ = true;
}

void Programmer::saveNowAndThen() {
    // A run that is killed leaves a half-written chip, as it does on a real bench.
    const auto now = std::chrono::steady_clock::now();
    if (now - lastSave_ < saveInterval)
        return;
    lastSave_ = now;
    bench_.store(chip_, cells_);
}

} // namespace sim
