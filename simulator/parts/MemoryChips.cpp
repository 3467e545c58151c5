// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/Chips.h"
#include "setup/Units.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace sim {
namespace {

Chip serialEeprom(std::string name, std::size_t size) {
    return {.name = std::move(name), .technology = Technology::SerialEeprom, .size = size};
}

Chip eeprom(std::string name, std::size_t size, int pins, Protection protection) {
    return {.name = std::move(name),
            .technology = Technology::ParallelEeprom,
            .size = size,
            .pins = pins,
            .protection = protection};
}

Chip parallel(std::string name, Technology technology, std::size_t size, int pins,
              std::uint32_t id) {
    return {.name = std::move(name),
            .technology = technology,
            .size = size,
            .pins = pins,
            .id = ChipId{id, 4}};
}

Chip uvEprom(std::string name, std::size_t size, int pins, std::uint32_t id,
             const Voltages &voltages = {}) {
    Chip chip = parallel(std::move(name), Technology::UvEprom, size, pins, id);
    chip.voltages = voltages;
    return chip;
}

Chip erasableEprom(std::string name, std::size_t size, std::uint32_t id) {
    return parallel(std::move(name), Technology::ErasableEprom, size, 28, id);
}

Chip flash(std::string name, std::size_t size, std::uint32_t id) {
    return parallel(std::move(name), Technology::ParallelFlash, size, 32, id);
}

Chip protectedFlash(std::string name, std::size_t size, int pins, std::uint32_t id) {
    Chip chip = parallel(std::move(name), Technology::ParallelFlash, size, pins, id);
    chip.protection = Protection::Software;
    return chip;
}

Chip serialFlash(std::string name, std::size_t size, std::uint32_t id) {
    constexpr int jedecDigits = 6;
    return {.name = std::move(name),
            .technology = Technology::SerialFlash,
            .size = size,
            .id = ChipId{id, jedecDigits},
            .protection = Protection::Software};
}

Chip microcontroller(std::string name, std::size_t size, std::size_t dataSize, int pins,
                     std::uint32_t id) {
    constexpr int signatureDigits = 6;
    return {.name = std::move(name),
            .technology = Technology::ParallelFlash,
            .size = size,
            .pins = pins,
            .id = ChipId{id, signatureDigits},
            .dataSize = dataSize,
            .fuses = {{"fuses_lo", 0x62}, {"fuses_hi", 0xDF}, {"lock_byte", 0xFF}}};
}

Chip withUserMemory(std::string name, std::size_t size, std::size_t dataSize, std::size_t userSize,
                    std::uint32_t id) {
    return {.name = std::move(name),
            .technology = Technology::ParallelFlash,
            .size = size,
            .pins = 40,
            .id = ChipId{id, 4},
            .dataSize = dataSize,
            .userSize = userSize,
            .fuses = {{"fuses", 0xDC}, {"lock_byte", 0xFF}}};
}

void append(std::vector<Chip> &all, std::vector<Chip> more) {
    for (Chip &chip : more)
        all.push_back(std::move(chip));
}

std::vector<Chip> serialEeproms() {
    return {
        serialEeprom("AT24C01", 128),        serialEeprom("AT24C02", 256),
        serialEeprom("AT24C04", 512),        serialEeprom("AT24C08", 1 * kib),
        serialEeprom("AT24C16", 2 * kib),    serialEeprom("AT24C32", 4 * kib),
        serialEeprom("AT24C64", 8 * kib),    serialEeprom("AT24C128", 16 * kib),
        serialEeprom("AT24C256", 32 * kib),  serialEeprom("AT24C512", 64 * kib),
        serialEeprom("24C02", 256),          serialEeprom("24LC64", 8 * kib),
        serialEeprom("24LC256", 32 * kib),   serialEeprom("AT24C1024", 128 * kib),
        serialEeprom("25LC010A", 128),       serialEeprom("25LC640", 8 * kib),
        serialEeprom("25LC1024", 128 * kib),
    };
}

std::vector<Chip> eeproms() {
    return {
        eeprom("AT28C04@DIP24", 512, 24, Protection::None),
        eeprom("AT28C16@DIP24", 2 * kib, 24, Protection::None),
        eeprom("AT28C64", 8 * kib, 28, Protection::None),
        eeprom("AT28C64B", 8 * kib, 28, Protection::Software),
        eeprom("AT28C256", 32 * kib, 28, Protection::Software),
        eeprom("X28C64", 8 * kib, 28, Protection::Software),
        eeprom("X28C256", 32 * kib, 28, Protection::Software),
        eeprom("CAT28C256", 32 * kib, 28, Protection::Software),
        eeprom("AT28C010", 128 * kib, 32, Protection::Software),
    };
}

std::vector<Chip> eproms() {
    return {
        erasableEprom("W27E257@DIP28", 32 * kib, 0xDA02),
        erasableEprom("W27C512@DIP28", 64 * kib, 0xDA08),
        erasableEprom("W27E512@DIP28", 64 * kib, 0xDA08),
        uvEprom("AM27C64@DIP28", 8 * kib, 28, 0x0115),
        uvEprom("AM27C128@DIP28", 16 * kib, 28, 0x0116),
        uvEprom("AM27C256@DIP28", 32 * kib, 28, 0x0110),
        uvEprom("AM27C512@DIP28", 64 * kib, 28, 0x0191),
        uvEprom("AM27C010@DIP32", 128 * kib, 32, 0x010E),
        uvEprom("AM27C020@DIP32", 256 * kib, 32, 0x0197),
        uvEprom("AM27C040@DIP32", 512 * kib, 32, 0x019B),
        uvEprom("AT27C256R@DIP28", 32 * kib, 28, 0x1E8C),
        uvEprom("M27C256B@DIP28", 32 * kib, 28, 0x208D),
        uvEprom("M27C512@DIP28", 64 * kib, 28, 0x203D, {.programming = 10, .write = 4}),
        uvEprom("M27C1001@DIP32", 128 * kib, 32, 0x2005),
        uvEprom("M27C2001@DIP32", 256 * kib, 32, 0x2061),
        uvEprom("M27C4001@PLCC32", 512 * kib, 32, 0x2041),
    };
}

std::vector<Chip> flashes() {
    return {
        flash("AM29F010@DIP32", 128 * kib, 0x0120),
        flash("AM29F002T@DIP32", 256 * kib, 0x01B0),
        flash("AM29F040@DIP32", 512 * kib, 0x01A4),
        flash("MX29F040@DIP32", 512 * kib, 0xC2A4),
        flash("SST39SF010A", 128 * kib, 0xBFB5),
        flash("SST39SF020A", 256 * kib, 0xBFB6),
        flash("SST39SF040", 512 * kib, 0xBFB7),
        protectedFlash("AT29C256@DIP28", 32 * kib, 28, 0x1FDC),
        protectedFlash("AT29C010A", 128 * kib, 32, 0x1FD5),
        protectedFlash("AT29C040A", 512 * kib, 32, 0x1FA4),
        serialFlash("W25Q80BV", 1 * mib, 0xEF4014),
        serialFlash("W25Q16BV", 2 * mib, 0xEF4015),
        serialFlash("W25Q32BV", 4 * mib, 0xEF4016),
        serialFlash("W25Q32JV", 4 * mib, 0xEF4016),
        serialFlash("W25Q64FV", 8 * mib, 0xEF4017),
        serialFlash("W25Q128FV@SOIC8", 16 * mib, 0xEF4018),
    };
}

std::vector<Chip> microcontrollers() {
    return {
        microcontroller("ATMEGA8@DIP28", 8 * kib, 512, 28, 0x1E9307),
        microcontroller("ATMEGA328@DIP28", 32 * kib, 1 * kib, 28, 0x1E9514),
        microcontroller("ATTINY13", 1 * kib, 64, 8, 0x1E9007),
        withUserMemory("AT89S8253", 12 * kib, 2 * kib, 64, 0x1E73),
    };
}

std::vector<Chip> everyChip() {
    std::vector<Chip> all = serialEeproms();
    append(all, eeproms());
    append(all, eproms());
    append(all, flashes());
    append(all, microcontrollers());
    return all;
}

} // namespace

const std::vector<Chip> &memoryChips() {
    static const std::vector<Chip> chips = everyChip();
    return chips;
}

} // namespace sim
