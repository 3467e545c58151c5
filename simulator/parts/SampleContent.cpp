// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/Bench.h"

#include "files/Files.h"
#include "files/HexDigits.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <string>

namespace sim {
namespace {

constexpr std::size_t pageSize = 256;

void copyText(const std::string &text, Bytes &content, std::size_t start) {
    const std::size_t room = content.size() - std::min(start, content.size());
    std::copy_n(text.begin(), std::min(text.size(), room),
                content.begin() + std::ptrdiff_t(content.size() - room));
}

/// Sixteen characters, the last of them a line feed.
std::string addressLine(std::size_t address) {
    constexpr int digits = 8;
    return "addr " + hex(address, digits) + "\n";
}

void fillWithAddresses(Bytes &content) {
    constexpr std::size_t lineLength = 16;
    for (std::size_t address = 0; address < content.size(); address += lineLength)
        copyText(addressLine(address), content, address);
}

void fillWithBlanks(Bytes &content, std::size_t length) {
    std::fill_n(content.begin(), std::min(length, content.size()), std::uint8_t{' '});
}

} // namespace

Bytes sampleContent(const Chip &chip) {
    Bytes content(chip.size, erasedByte);
    fillWithAddresses(content);
    fillWithBlanks(content, pageSize);
    copyText("Sample content of the simulated chip " + chip.name + ", " +
                 std::to_string(chip.size) +
                 " bytes. Next page: every byte value once; then each line holds its address.\n",
             content, 0);
    if (content.size() >= 2 * pageSize) {
        const auto table = content.begin() + std::ptrdiff_t(pageSize);
        std::iota(table, table + std::ptrdiff_t(pageSize), std::uint8_t{0});
    }
    return content;
}

} // namespace sim
