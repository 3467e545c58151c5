// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "session/DeviceInfo.h"

#include "parts/Catalogue.h"
#include "parts/Chips.h"
#include "session/Voltages.h"

#include <array>
#include <cstdio>

namespace sim {
namespace {

std::string availability(ProgrammerModel model) {
    switch (model) {
    case ProgrammerModel::Tl866a:
        return "TL866A/CS";
    case ProgrammerModel::T76:
        return "T76";
    default:
        return "TL866II, T48, T56";
    }
}

/// The socket that the chip's package fits; small packages count as the DIP of as many pins.
std::string packageOf(const Chip &chip, Dialect dialect) {
    const bool plcc = chip.name.find("@PLCC") != std::string::npos;
    if (plcc && dialect == Dialect::New)
        return "PLCC" + std::to_string(chip.pins);
    if (plcc)
        return "Adapter004.JPG";
    return needsTsopAdapter(chip) ? "Adapter001.JPG" : "DIP" + std::to_string(chip.pins);
}

std::string shortHex(int value) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%02x", unsigned(value));
    return text.data();
}

std::string row(Dialect dialect) {
    constexpr int stars = 31;
    constexpr int dashes = 40;
    return (dialect == Dialect::New ? std::string(dashes, '-') : std::string(stars, '*')) + "\n";
}

std::string voltageInfo(const Voltages &voltages, Dialect dialect) {
    return row(dialect) + "VPP programming voltage: " + volts(voltages.programming) +
           "V\nVDD write voltage: " + volts(voltages.write) +
           "V\nVCC verify voltage: " + volts(voltages.verify) +
           "V\nPulse delay: " + std::to_string(voltages.pulse) + "us\n" + row(dialect);
}

std::string memoryInfo(const Chip &chip, ProgrammerModel model, Dialect dialect) {
    std::string further;
    for (const std::size_t size : {chip.dataSize, chip.userSize})
        if (size > 0)
            further += " + " + std::to_string(size) + " Bytes";
    std::string text = "Name: " + chip.name + "\nAvailable on: " + availability(model) +
                       "\nMemory: " + std::to_string(chip.size) + " Bytes" + further +
                       "\nPackage: " + packageOf(chip, dialect) + "\n";
    if (dialect == Dialect::Release)
        text += "ICSP: -\n";
    text += "Protocol: " + shortHex(protocolOf(chip)) +
            "\nRead buffer size: " + std::to_string(readBlock(chip)) +
            " Bytes\nWrite buffer size: " + std::to_string(writePage(chip)) + " Bytes\n";
    return hasChosenVoltages(chip) ? text + voltageInfo(chip.voltages, dialect) : text;
}

std::string logicInfo(const LogicPart &part) {
    return "Name: " + part.name + "\nPackage:\t DIP" + std::to_string(part.pins) +
           "\nVCC voltage:\t 2.35V\nVector count:\t " + std::to_string(part.rows.size()) + "\n";
}

} // namespace

std::optional<std::string> deviceInfo(const std::string &name, ProgrammerModel model,
                                      Dialect dialect) {
    const std::string heading =
        dialect == Dialect::New ? "\n---------------Chip Info----------------\n" : "";
    if (const auto part = findLogicPart(name))
        return heading + logicInfo(*part);
    if (const auto chip = findChip(name, dialect))
        return heading + memoryInfo(*chip, model, dialect);
    return std::nullopt;
}

} // namespace sim
