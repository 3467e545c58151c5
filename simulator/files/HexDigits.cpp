// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/HexDigits.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <numeric>
#include <system_error>

namespace sim {

std::string hex(std::uint64_t value, int digits) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "0x%0*llX", digits,
                  static_cast<unsigned long long>(value));
    return text.data();
}

Bytes bytesOfDigits(std::string_view digits) {
    constexpr int base = 16;
    Bytes bytes;
    for (; digits.size() >= 2; digits.remove_prefix(2)) {
        std::uint8_t value = 0;
        const auto [stop, error] = std::from_chars(digits.data(), digits.data() + 2, value, base);
        if (error != std::errc() || stop != digits.data() + 2)
            break;
        bytes.push_back(value);
    }
    return bytes;
}

std::string digitsOfBytes(const Bytes &bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr unsigned base = 16;
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += digits[byte / base];
        text += digits[byte % base];
    }
    return text;
}

std::uint8_t sumOf(const Bytes &bytes) {
    return std::uint8_t(std::accumulate(bytes.begin(), bytes.end(), 0U));
}

std::size_t bigEndian(const Bytes &bytes, std::size_t start, std::size_t length) {
    constexpr int byteBits = 8;
    std::size_t value = 0;
    for (std::size_t i = start; i < start + length; ++i)
        value = value << byteBits | bytes[i];
    return value;
}

bool beginsWithRecord(std::string_view content, char letter) {
    const auto start = content.find_first_not_of(lineEnds);
    if (start == std::string_view::npos || content[start] != letter)
        return false;
    content.remove_prefix(start + 1);
    const std::string_view line = content.substr(0, content.find_first_of(lineEnds));
    return line.find_first_not_of(hexDigits) == std::string_view::npos;
}

std::string_view takeRecordLine(std::string_view &content, std::size_t &lineNumber) {
    const auto start = std::min(content.find_first_not_of(lineEnds), content.size());
    const std::string_view passed = content.substr(0, start);
    lineNumber += std::size_t(std::count(passed.begin(), passed.end(), '\n'));
    content.remove_prefix(start);
    const std::string_view line = content.substr(0, content.find_first_of(lineEnds));
    content.remove_prefix(line.size());
    return line;
}

void place(const Bytes &data, std::size_t address, Bytes &image) {
    for (std::size_t i = 0; i < data.size() && address + i < image.size(); ++i)
        image[address + i] = data[i];
}

} // namespace sim
