// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/NameRules.h"

#include "setup/Units.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <initializer_list>
#include <regex>
#include <string_view>

namespace sim {
namespace {

constexpr std::size_t kilobit = kib / 8;
constexpr std::size_t megabit = kib * kilobit;

/// "AT24C256": series 24, letters C, density 256.
struct NameParts {
    std::string series;
    std::string letters;
    std::string density;
};

std::size_t numberIn(const std::string &digits) {
    return std::strtoul(digits.c_str(), nullptr, 10);
}

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

Chip memory(Technology technology, std::size_t size) {
    Chip chip;
    chip.technology = technology;
    chip.size = size;
    return chip;
}

/// 010, 1001 and 100 are one megabit, 160 and 1605 sixteen.
std::size_t megabits(const std::string &density) {
    const std::string digits = std::to_string(numberIn(density));
    for (const std::string_view leading : {"128", "256", "512", "16", "32", "64"})
        if (digits.starts_with(leading))
            return numberIn(std::string(leading)) * megabit;
    for (const std::string_view leading : {"1", "2", "4", "8"})
        if (digits.starts_with(leading))
            return numberIn(std::string(leading)) * megabit;
    return megabit;
}

std::size_t kilobits(const std::string &density) {
    return std::bit_floor(std::max<std::size_t>(numberIn(density), 1)) * kilobit;
}

/// 64 to 512 are kilobits, 010 and above megabits.
std::size_t parallelSize(const std::string &density) {
    const bool counted =
        isOneOf(density, {"04", "08", "16", "17", "32", "64", "65", "128", "256", "257", "512"});
    return counted ? kilobits(density) : megabits(density);
}

std::size_t microwireSize(const std::string &density) {
    struct Step {
        std::string_view code;
        std::size_t bytes;
    };
    for (const Step &step : {Step{"06", 32}, Step{"56", 256}, Step{"57", 256}, Step{"66", 512},
                             Step{"76", 1 * kib}, Step{"86", 2 * kib}})
        if (density == step.code)
            return step.bytes;
    return 128;
}

/// 010 to 640 count in tenths of kilobits, 128 and above in kilobits.
std::size_t spiEepromSize(const std::string &density) {
    const bool tenths = density.size() == 3 && density.back() == '0';
    return tenths ? kilobits(density.substr(0, 2)) : kilobits(density);
}

Chip serialChip(const NameParts &parts) {
    if (isOneOf(parts.letters, {"", "C", "LC", "AA", "BC", "H", "HP", "W"}))
        return memory(Technology::SerialEeprom, spiEepromSize(parts.density));
    Chip chip = memory(Technology::SerialFlash, megabits(parts.density));
    chip.protection = Protection::Software;
    return chip;
}

Chip flashChip(const NameParts &parts) {
    const bool small = isOneOf(parts.density, {"256", "257", "512"}) && parts.letters.size() < 3 &&
                       parts.letters != "GL";
    return memory(Technology::ParallelFlash,
                  small ? kilobits(parts.density) : megabits(parts.density));
}

Chip chipOf(const NameParts &parts) {
    if (parts.series == "24")
        return memory(Technology::SerialEeprom, kilobits(parts.density));
    if (parts.series == "93")
        return memory(Technology::SerialEeprom, microwireSize(parts.density));
    if (parts.series == "95")
        return memory(Technology::SerialEeprom, spiEepromSize(parts.density));
    if (parts.series == "25" || parts.series == "26")
        return serialChip(parts);
    if (parts.series == "27")
        return memory(Technology::UvEprom, parallelSize(parts.density));
    if (parts.series == "28" && parts.letters.find('F') == std::string::npos)
        return memory(Technology::ParallelEeprom, parallelSize(parts.density));
    return flashChip(parts);
}

Chip microcontroller() {
    Chip chip = memory(Technology::ParallelFlash, 8 * kib);
    chip.pins = 40;
    return chip;
}

int pinsOf(const std::string &name, const Chip &chip) {
    static const std::regex package("@[A-Z]+(\\d+)");
    if (std::smatch found; std::regex_search(name, found, package))
        return std::atoi(found[1].str().c_str());
    if (chip.technology == Technology::SerialEeprom || chip.technology == Technology::SerialFlash)
        return 8;
    struct Step {
        std::size_t size;
        int pins;
    };
    for (const Step &step : {Step{2 * kib, 24}, Step{64 * kib, 28}, Step{4 * megabit, 32}})
        if (chip.size <= step.size)
            return step.pins;
    return 48;
}

} // namespace

Chip chipFromName(const std::string &name) {
    static const std::regex scheme("^[A-Z-]*?(24|25|26|27|28|29|39|49|93|95)([A-Z]*)(\\d+)");
    std::smatch found;
    const bool known = std::regex_search(name, found, scheme);
    Chip chip = known ? chipOf({found[1], found[2], found[3]}) : microcontroller();
    chip.name = name;
    if (known)
        chip.pins = pinsOf(name, chip);
    return chip;
}

} // namespace sim
