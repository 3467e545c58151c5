// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/Files.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace sim {

constexpr std::string_view lineEnds = "\r\n";
constexpr std::string_view hexDigits = "0123456789abcdefABCDEF";

/// `value` in upper-case hexadecimal with "0x" and at least `digits` digits.
std::string hex(std::uint64_t value, int digits);

/// The bytes that pairs of hexadecimal digits stand for, up to the first that is none.
Bytes bytesOfDigits(std::string_view digits);

/// Two upper-case digits for each byte.
std::string digitsOfBytes(const Bytes &bytes);

/// The sum of the bytes, modulo 256.
std::uint8_t sumOf(const Bytes &bytes);

/// A number of up to four bytes, the most significant one first.
std::size_t bigEndian(const Bytes &bytes, std::size_t start, std::size_t length);

/// Whether a record's letter follows the line ends that `content` begins with, and only
/// hexadecimal digits up to the next line end.
bool beginsWithRecord(std::string_view content, char letter);

/// Takes the next line that is not empty from `content` and counts the lines passed.
std::string_view takeRecordLine(std::string_view &content, std::size_t &lineNumber);

/// Copies `data` to `address`; what falls outside of the image is dropped.
void place(const Bytes &data, std::size_t address, Bytes &image);

} // namespace sim
