#include "Chips.h"

#include <algorithm>

#include <strings.h>

namespace sim {

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

bool sameDeviceName(const std::string &one, const std::string &other) {
    return strcasecmp(one.c_str(), other.c_str()) == 0;
}

} // namespace sim
