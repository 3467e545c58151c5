// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "session/Socket.h"

#include "session/Output.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace sim {
namespace {

constexpr std::size_t badAddress = 0x1234;
constexpr std::uint8_t allBits = 0xFF;
constexpr std::chrono::milliseconds shortestErase{20};
constexpr std::chrono::milliseconds erasePerMebibyte{2500};
constexpr std::chrono::seconds saveInterval{1};
constexpr std::string_view deviceGone = "\nIO error: bulk_transfer: LIBUSB_ERROR_NO_DEVICE\n";

std::size_t blockCount(std::size_t size, std::size_t block) {
    return (size + block - 1) / block;
}

std::chrono::milliseconds eraseTime(const Chip &chip) {
    constexpr std::size_t mebibyte = std::size_t{1024} * 1024;
    return shortestErase + erasePerMebibyte * chip.size / mebibyte;
}

} // namespace

void sayOvercurrent() {
    say("Overcurrent protection!\a\n");
}

void sayNoAnswer() {
    say(deviceGone);
    say("IO error: expected 8 bytes but 0 bytes transferred\n");
}

Socket::Socket(const Chip &socketChip, const Environment &surroundings, bool unlocked)
    : chip_(socketChip),
      environment_(surroundings),
      bench_(surroundings.bench, surroundings.firstContent),
      cells_(bench_.load(socketChip)),
      unlocked_(unlocked) {}

Outcome Socket::begin() {
    constexpr std::size_t later = 1;
    if (environment_.placeOf(Fault::Overcurrent, later) == 0) {
        sayOvercurrent();
        return Outcome::Failed;
    }
    if (environment_.placeOf(Fault::Unplugged, later) == 0) {
        unplug(Transfer::Read);
        return Outcome::Failed;
    }
    return Outcome::Good;
}

std::optional<Bytes> Socket::read(std::size_t length) {
    const std::size_t blocks = blockCount(length, readBlock(chip_));
    ProgressLine progress("Reading", chip_.memory, environment_);
    for (std::size_t i = 0; i < blocks; ++i) {
        progress.beginBlock(i, blocks);
        progress.endBlock(i, blocks);
        if (breaksOff(Transfer::Read, i + 1, blocks))
            return std::nullopt;
    }
    progress.finish();
    Bytes content = cells_;
    if (environment_.has(Fault::BadByte))
        content[badAddress % chip_.size] ^= allBits;
    content.resize(length);
    return content;
}

Outcome Socket::write(const Bytes &image) {
    const std::size_t page = writePage(chip_);
    const std::size_t pages = blockCount(image.size(), page);
    ProgressLine progress("Writing", chip_.memory, environment_);
    for (std::size_t i = 0; i < pages; ++i) {
        progress.beginBlock(i, pages);
        if (!writeProtected())
            programPage(image, i * page, std::min(page, image.size() - i * page));
        progress.endBlock(i, pages);
        if (breaksOff(Transfer::Write, i + 1, pages)) {
            bench_.store(chip_, cells_);
            return Outcome::Failed;
        }
        saveNowAndThen();
    }
    progress.finish();
    bench_.store(chip_, cells_);
    return Outcome::Good;
}

void Socket::erase() {
    StepLine line("Erasing... ", " ", environment_.dialect);
    spend(eraseTime(chip_), environment_.pace);
    if (!writeProtected())
        std::fill(cells_.begin(), cells_.end(), erasedByte);
    bench_.store(chip_, cells_);
    line.finish();
}

Outcome Socket::eraseAlone() {
    if (environment_.has(Fault::Overcurrent)) {
        const StepLine line("Erasing... ", " ", environment_.dialect);
        sayOvercurrentInLine();
        return Outcome::Failed;
    }
    if (environment_.has(Fault::Unplugged)) {
        const StepLine line("Erasing... ", " ", environment_.dialect);
        unplug(Transfer::Read);
        return Outcome::Failed;
    }
    erase();
    return Outcome::Good;
}

void Socket::end() const {
    if (gone_)
        sayNoAnswer();
}

bool Socket::breaksOff(Transfer transfer, std::size_t done, std::size_t blocks) {
    constexpr std::size_t second = 2;
    if (environment_.placeOf(Fault::Overcurrent, std::min(second, blocks)) == done) {
        sayOvercurrentInLine();
        return true;
    }
    const std::size_t halfWay = std::max<std::size_t>(blocks / 2, 1);
    if (environment_.placeOf(Fault::Unplugged, halfWay) != done)
        return false;
    unplug(transfer);
    return true;
}

void Socket::sayOvercurrentInLine() const {
    say("\n");
    sayOvercurrent();
}

void Socket::unplug(Transfer transfer) {
    gone_ = true;
    // A block that cannot be sent waits for no answer.
    if (transfer == Transfer::Write)
        say(deviceGone);
    else
        sayNoAnswer();
}

bool Socket::writeProtected() const {
    return environment_.has(Fault::Protected) && chip_.protection == Protection::Software &&
           !unlocked_;
}

void Socket::programPage(const Bytes &image, std::size_t start, std::size_t length) {
    for (std::size_t i = start; i < start + length; ++i)
        cells_[i] = writeReplaces(chip_) ? image[i] : cells_[i] & image[i];
}

void Socket::saveNowAndThen() {
    // A run that is killed leaves a half-written chip, as it does on a real bench.
    const auto now = std::chrono::steady_clock::now();
    if (now - lastSave_ < saveInterval)
        return;
    lastSave_ = now;
    bench_.store(chip_, cells_);
}

} // namespace sim
