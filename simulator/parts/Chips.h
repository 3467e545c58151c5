// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace sim {

/// How a memory keeps its bytes decides what erases it and how it is written.
enum class Technology {
    SerialEeprom,   ///< every write replaces the byte; there is nothing to erase
    SerialFlash,    ///< erased as a whole, then written
    ParallelEeprom, ///< can be erased as a whole, but every write replaces the byte
    ParallelFlash,  ///< erased as a whole, then written
    ErasableEprom,  ///< a windowless EPROM that the programmer erases
    UvEprom,        ///< erased by ultraviolet light alone
};

/// What a chip answers when it is asked who it is.
struct ChipId {
    std::uint32_t value = 0;
    int digits = 4; ///< hexadecimal digits that the tool prints
};

enum class Protection { None, Software };

/// What a chip is programmed with where the tool lets it be chosen.
struct Voltages {
    double programming = 12.5; ///< volts on VPP
    double write = 5.5;        ///< volts on VDD
    double verify = 5;         ///< volts on VCC
    int pulse = 100;           ///< microseconds
};

/// A value that configures a microcontroller.
struct Fuse {
    std::string name;
    unsigned value = 0; ///< as the chip leaves the factory
};

/// A memory that the programmer can read and write.
struct Chip {
    std::string name;
    Technology technology = Technology::SerialEeprom;
    std::size_t size = 0; ///< bytes
    int pins = 8;
    std::optional<ChipId> id = std::nullopt;
    Protection protection = Protection::None;
    Voltages voltages = {};       ///< of a chip whose voltages can be chosen
    std::size_t dataSize = 0;     ///< bytes of a microcontroller's memory for data
    std::size_t userSize = 0;     ///< bytes of its memory for what the user wants to note there
    std::vector<Fuse> fuses = {}; ///< of a microcontroller
    std::string memory = "Code";  ///< as the tool calls it
};

/// The memories that the simulator knows by heart.
const std::vector<Chip> &memoryChips();

/// Bytes that one progress update of a read stands for.
std::size_t readBlock(const Chip &chip);

/// Bytes that one progress update of a write stands for.
std::size_t writePage(const Chip &chip);

/// Whether the tool lets a user choose the voltages that the chip is programmed with.
bool hasChosenVoltages(const Chip &chip);

/// The number of the algorithm that the programmer runs for the chip.
int protocolOf(const Chip &chip);

/// Whether the chip stands on an adapter of its own that the programmer looks for.
bool needsTsopAdapter(const Chip &chip);

bool erasesInSocket(const Chip &chip);

/// Whether writing replaces what a cell holds; otherwise it can only turn ones into zeros.
bool writeReplaces(const Chip &chip);

/// A microcontroller's memory for data, a chip by itself on the bench; nothing for other chips.
std::optional<Chip> dataMemory(const Chip &chip);

/// Likewise a microcontroller's memory for the user's notes.
std::optional<Chip> userMemory(const Chip &chip);

/// Device names are compared whole, in any case.
bool sameDeviceName(const std::string &one, const std::string &other);

} // namespace sim
