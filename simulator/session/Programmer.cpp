// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "session/Programmer.h"

#include "files/HexDigits.h"
#include "files/HexRecords.h"
#include "files/ImageFile.h"
#include "session/FuseMemory.h"
#include "session/Output.h"
#include "session/Voltages.h"

#include <algorithm>
#include <cstdint>
#include <variant>

namespace sim {
namespace {

/// What an empty socket answers: every bit is one.
std::uint64_t emptyAnswer(int digits) {
    constexpr int bitsPerDigit = 4;
    return (std::uint64_t{1} << (bitsPerDigit * digits)) - 1;
}

std::size_t roundedUp(std::size_t size, std::size_t block) {
    return (size + block - 1) / block * block;
}

Bytes inFormat(const Bytes &content, FileFormat format) {
    if (format == FileFormat::Binary)
        return content;
    const std::string text =
        format == FileFormat::IntelHex ? encodeIntelHex(content) : encodeSRecord(content);
    return {text.begin(), text.end()};
}

std::string nameOf(Section section) {
    switch (section) {
    case Section::Data:
        return "data";
    case Section::Config:
        return "config";
    case Section::User:
        return "user";
    case Section::Calibration:
        return "calibration";
    case Section::Code:
        break;
    }
    return "code";
}

SizeMismatch mismatchOf(const Options &options) {
    if (options.hideSizeWarning)
        return SizeMismatch::Hidden;
    return options.ignoreSizeMismatch ? SizeMismatch::Warned : SizeMismatch::Refused;
}

} // namespace

Programmer::Programmer(const Chip &socketChip, const Options &commandLine,
                       const Environment &surroundings)
    : chip_(socketChip),
      options_(commandLine),
      environment_(surroundings),
      socket_(socketChip, surroundings, commandLine.unprotect) {}

Outcome Programmer::run() {
    if (findAdapter() == Outcome::Failed)
        return Outcome::Failed;
    if (environment_.dialect == Dialect::Release)
        sayVoltages();
    if (checkId() == Outcome::Failed)
        return Outcome::Failed;
    if (environment_.dialect == Dialect::New)
        sayVoltages();
    if (options_.idAlone)
        return Outcome::Good;
    const Outcome outcome = act();
    socket_.end();
    return outcome;
}

Outcome Programmer::findAdapter() const {
    if (!environment_.has(Fault::NoTsopAdapter) || !needsTsopAdapter(chip_))
        return Outcome::Good;
    say("TSOP adapter not found!\n");
    return environment_.dialect == Dialect::Release ? Outcome::Failed : Outcome::Good;
}

void Programmer::sayVoltages() const {
    if (hasChosenVoltages(chip_))
        say(voltageLine(chip_.voltages, environment_.dialect));
}

Outcome Programmer::checkId() const {
    if (options_.skipId) {
        say("WARNING: skipping Chip ID test\n");
        return Outcome::Good;
    }
    if (!chip_.id) {
        if (options_.idAlone)
            say("This chip doesn't have a chip ID!\n");
        return options_.idAlone ? Outcome::Failed : Outcome::Good;
    }
    if (environment_.has(Fault::WrongId))
        return complainAboutId();
    say("Chip ID: " + hex(chip_.id->value, chip_.id->digits) + "  OK\n");
    return Outcome::Good;
}

Outcome Programmer::complainAboutId() const {
    const int digits = chip_.id->digits;
    const std::string mismatch = "expected " + hex(chip_.id->value, digits) + ", got " +
                                 hex(emptyAnswer(digits), digits) + " (unknown)\n";
    if (options_.idAlone) {
        say("Chip ID mismatch: " + mismatch);
        return Outcome::Failed;
    }
    if (options_.ignoreIdMismatch) {
        say("WARNING: Chip ID mismatch: " + mismatch);
        return Outcome::Good;
    }
    say("Invalid Chip ID: " + mismatch + "(use '-y' to continue anyway at your own risk)\n");
    return Outcome::Failed;
}

Outcome Programmer::act() {
    if (options_.action == Action::Erase)
        return erase();
    const Section section = options_.section.value_or(Section::Code);
    if (section == Section::Code)
        return actOnCode();
    if (section == Section::Data && chip_.dataSize > 0)
        return actOn(*dataMemory(chip_));
    if (section == Section::User && chip_.userSize > 0)
        return actOn(*userMemory(chip_));
    if (section == Section::Config && !chip_.fuses.empty())
        return actOnFuses();
    say("No " + nameOf(section) + " section found.\n");
    return Outcome::Failed;
}

Outcome Programmer::actOnCode() {
    switch (options_.action) {
    case Action::Read:
        return read();
    case Action::Write:
        return write();
    case Action::Verify:
        return verify();
    default:
        return checkBlank();
    }
}

Outcome Programmer::actOn(const Chip &furtherMemory) const {
    Programmer programmer(furtherMemory, options_, environment_);
    const Outcome outcome = programmer.actOnCode();
    programmer.socket_.end();
    return outcome;
}

Outcome Programmer::actOnFuses() const {
    const FuseMemory fuses(chip_, environment_);
    if (options_.action == Action::Read)
        return fuses.read(options_.file);
    if (options_.action == Action::Write)
        return fuses.write(options_.file);
    say("The simulator cannot do this with fuses.\n");
    return Outcome::Failed;
}

Outcome Programmer::readFurther(const std::optional<Chip> &memory, const std::string &path) const {
    if (!memory)
        return Outcome::Good;
    Socket socket(*memory, environment_, true);
    OutputFile file(path);
    const auto content = socket.read(memory->size);
    if (!content)
        return Outcome::Failed;
    file.fill(*content);
    return Outcome::Good;
}

Outcome Programmer::readTheRest() const {
    if (options_.section || options_.file == standardStream)
        return Outcome::Good;
    // Up to the last dot of the whole path, as the tool does, not only of its last part.
    const std::string stem = options_.file.substr(0, options_.file.rfind('.'));
    if (readFurther(dataMemory(chip_), stem + ".eeprom.bin") == Outcome::Failed ||
        readFurther(userMemory(chip_), stem + ".user.bin") == Outcome::Failed)
        return Outcome::Failed;
    if (chip_.fuses.empty())
        return Outcome::Good;
    return FuseMemory(chip_, environment_).read(stem + ".fuses.conf");
}

Outcome Programmer::read() {
    if (socket_.begin() == Outcome::Failed)
        return Outcome::Failed;
    OutputFile file(options_.file);
    const auto content = socket_.read(chip_.size);
    if (!content)
        return Outcome::Failed;
    file.fill(inFormat(*content, options_.format));
    return readTheRest();
}

Outcome Programmer::verify() {
    const auto image = loadFile();
    if (!image || socket_.begin() == Outcome::Failed)
        return Outcome::Failed;
    return compare(*image, chip_.size);
}

Outcome Programmer::write() {
    const bool protectable = chip_.protection == Protection::Software;
    if (protectable && !options_.protect)
        say("Use -P if you want to write-protect this chip.\n");
    const Outcome outcome = writeAndVerify();
    if (protectable && outcome == Outcome::Failed)
        say("This chip may be write-protected. Use -u and try again.\n");
    if (protectable && outcome == Outcome::Good && options_.protect)
        say("Protect on...OK\n");
    return outcome;
}

Outcome Programmer::writeAndVerify() {
    auto image = loadFile();
    if (!image || socket_.begin() == Outcome::Failed)
        return Outcome::Failed;
    image->resize(std::min(roundedUp(image->size(), readBlock(chip_)), chip_.size), erasedByte);
    prepareCells();
    if (socket_.write(*image) == Outcome::Failed)
        return Outcome::Failed;
    return options_.skipVerify ? Outcome::Good : compare(*image, image->size());
}

void Programmer::prepareCells() {
    if (!options_.skipErase && erasesInSocket(chip_))
        socket_.erase();
    if (options_.unprotect && chip_.protection == Protection::Software)
        say("Protect off...OK\n");
}

Outcome Programmer::erase() {
    if (!erasesInSocket(chip_)) {
        say("This chip can't be erased!\n");
        return Outcome::Failed;
    }
    return socket_.begin() == Outcome::Failed ? Outcome::Failed : socket_.eraseAlone();
}

Outcome Programmer::checkBlank() {
    if (socket_.begin() == Outcome::Failed)
        return Outcome::Failed;
    const auto content = socket_.read(chip_.size);
    if (!content)
        return Outcome::Failed;
    const bool blank = std::all_of(content->begin(), content->end(),
                                   [](std::uint8_t byte) { return byte == erasedByte; });
    say(chip_.memory + (blank ? " memory section is blank.\n" : " memory section is not blank.\n"));
    return blank ? Outcome::Good : Outcome::Failed;
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

Outcome Programmer::compare(const Bytes &image, std::size_t readLength) {
    const auto content = socket_.read(readLength);
    if (!content)
        return Outcome::Failed;
    const auto [expected, found] = std::mismatch(image.begin(), image.end(), content->begin());
    if (expected == image.end()) {
        say("Verification OK\n");
        return Outcome::Good;
    }
    const auto address = std::size_t(expected - image.begin());
    say("Verification failed at address " + hex(address, 4) + ": File=" + hex(*expected, 2) +
        ", Device=" + hex(*found, 2) + "\n");
    return Outcome::Failed;
}

} // namespace sim
