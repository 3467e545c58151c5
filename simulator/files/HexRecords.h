// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/Files.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

namespace sim {

/// What a file of hexadecimal records holds: an image of the chip, blank where no record says
/// anything. What lies beyond the chip has been dropped.
struct RecordImage {
    Bytes image;
    std::string title; ///< an S-record file's own heading
};

/// Why the records cannot be used, ready to be shown.
struct RecordError {
    std::string message;
};

using Records = std::variant<RecordImage, RecordError>;

/// Whether a file that begins with `content` is taken for one: after line ends the letter that
/// records begin with, and nothing but hexadecimal digits up to the next line end.
bool isIntelHex(std::string_view content);
bool isSRecord(std::string_view content);

Records decodeIntelHex(std::string_view content, std::size_t chipSize);
Records decodeSRecord(std::string_view content, std::size_t chipSize);

/// `content` as records of 16 bytes each, from address 0 on.
std::string encodeIntelHex(const Bytes &content);
std::string encodeSRecord(const Bytes &content);

} // namespace sim
