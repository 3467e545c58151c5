// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "session/FuseMemory.h"

#include "files/Files.h"
#include "files/HexDigits.h"
#include "parts/Bench.h"
#include "session/Output.h"

#include <optional>
#include <regex>
#include <string>
#include <system_error>

namespace sim {
namespace {

/// The newer tool leaves the blanks out.
std::string linesOf(const std::vector<Fuse> &fuses, Dialect dialect) {
    constexpr int digits = 2;
    const std::string equals = dialect == Dialect::New ? "=" : " = ";
    std::string text;
    for (const Fuse &fuse : fuses) {
        std::string value = hex(fuse.value, digits);
        for (char &letter : value)
            letter = letter >= 'A' && letter <= 'F' ? char(letter - 'A' + 'a') : letter;
        text += fuse.name + equals + value + "\n";
    }
    return text;
}

/// The value that a line of `text` gives to `name`.
std::optional<unsigned> valueIn(const std::string &text, const std::string &name) {
    constexpr int base = 16;
    const std::regex line("(^|\n)" + name + "\\s*=\\s*0x([0-9A-Fa-f]{1,4})");
    std::smatch found;
    if (!std::regex_search(text, found, line))
        return std::nullopt;
    return unsigned(std::stoul(found[2], nullptr, base));
}

std::string textOf(const std::filesystem::path &file) {
    const Bytes content = readWholeFile(file);
    return {content.begin(), content.end()};
}

void store(const std::filesystem::path &file, const std::string &text) {
    OutputFile(file).fill({text.begin(), text.end()});
}

} // namespace

FuseMemory::FuseMemory(const Chip &chip, const Environment &environment)
    : chip_(chip), environment_(environment) {}

Outcome FuseMemory::read(const std::filesystem::path &file) const {
    StepLine line("Reading config... ", "  ", environment_.dialect);
    const std::vector<Fuse> fuses = load();
    line.finish();
    store(file, linesOf(fuses, environment_.dialect));
    return Outcome::Good;
}

Outcome FuseMemory::write(const std::filesystem::path &file) const {
    const std::string text = textOf(file);
    std::vector<Fuse> fuses = chip_.fuses;
    for (Fuse &fuse : fuses) {
        const auto value = valueIn(text, fuse.name);
        if (!value) {
            say("Could not read config " + fuse.name + " value.\n");
            return Outcome::Failed;
        }
        fuse.value = *value;
    }
    StepLine line("Writing fuses... ", "  ", environment_.dialect);
    store(benchFile(), linesOf(fuses, Dialect::Release));
    line.finish();
    return Outcome::Good;
}

std::filesystem::path FuseMemory::benchFile() const {
    const Bench bench(environment_.bench, environment_.firstContent);
    return bench.fileOf(chip_).replace_extension(".fuses.conf");
}

std::vector<Fuse> FuseMemory::load() const {
    std::vector<Fuse> fuses = chip_.fuses;
    std::error_code error;
    if (!std::filesystem::exists(benchFile(), error))
        return fuses;
    const std::string text = textOf(benchFile());
    for (Fuse &fuse : fuses)
        fuse.value = valueIn(text, fuse.name).value_or(fuse.value);
    return fuses;
}

} // namespace sim
