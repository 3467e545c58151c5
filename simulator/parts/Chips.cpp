// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/Chips.h"

#include <algorithm>

#include <strings.h>

namespace sim {
namespace {

std::optional<Chip> furtherMemory(const Chip &chip, const std::string &memory, std::size_t size,
                                  const std::string &ending) {
    if (size == 0)
        return std::nullopt;
    Chip further;
    further.name = chip.name + ending;
    further.technology = Technology::SerialEeprom;
    further.size = size;
    further.memory = memory;
    return further;
}

} // namespace

std::size_t readBlock(const Chip &chip) {
    constexpr std::size_t flashBlock = 4096;
    constexpr std::size_t smallBlock = 512;
    constexpr std::size_t epromBlock = 1024;
    switch (chip.technology) {
    case Technology::SerialFlash:
        return flashBlock;
    case Technology::SerialEeprom:
    case Technology::ParallelEeprom:
        return smallBlock;
    default:
        return epromBlock;
    }
}

std::size_t writePage(const Chip &chip) {
    constexpr std::size_t flashPage = 256;
    constexpr std::size_t parallelPage = 128;
    constexpr std::size_t smallestSerialPage = 8;
    constexpr std::size_t serialPagesPerChip = 512;
    switch (chip.technology) {
    case Technology::SerialFlash:
        return flashPage;
    case Technology::SerialEeprom:
        return std::clamp(chip.size / serialPagesPerChip, smallestSerialPage, parallelPage);
    default:
        return std::min(parallelPage, chip.size);
    }
}

bool erasesInSocket(const Chip &chip) {
    return chip.technology != Technology::SerialEeprom && chip.technology != Technology::UvEprom;
}

bool writeReplaces(const Chip &chip) {
    return chip.technology == Technology::SerialEeprom ||
           chip.technology == Technology::ParallelEeprom;
}

bool hasChosenVoltages(const Chip &chip) {
    return chip.technology == Technology::UvEprom;
}

int protocolOf(const Chip &chip) {
    switch (chip.technology) {
    case Technology::SerialEeprom:
        return 0x01;
    case Technology::SerialFlash:
        return 0x03;
    case Technology::ParallelFlash:
        return 0x06;
    case Technology::ParallelEeprom:
        return 0x07;
    case Technology::UvEprom:
        return 0x0B;
    case Technology::ErasableEprom:
        break;
    }
    return 0x0D;
}

bool needsTsopAdapter(const Chip &chip) {
    return chip.name.find("@TSOP48") != std::string::npos ||
           chip.name.find("@TSOP56") != std::string::npos;
}

std::optional<Chip> dataMemory(const Chip &chip) {
    return furtherMemory(chip, "Data", chip.dataSize, ".eeprom");
}

std::optional<Chip> userMemory(const Chip &chip) {
    return furtherMemory(chip, "User", chip.userSize, ".user");
}

bool sameDeviceName(const std::string &one, const std::string &other) {
    return strcasecmp(one.c_str(), other.c_str()) == 0;
}

} // namespace sim
