// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/Files.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <variant>

namespace sim {

/// What becomes of a file that is longer or shorter than the chip.
enum class SizeMismatch { Refused, Warned, Hidden };

/// What a write or a verify is to put into the chip or to find there.
struct Image {
    Bytes bytes;       ///< at most as many as the chip has
    std::string notes; ///< what is said about the file, whole lines
};

/// Why the file cannot be used: whole lines, ready to be shown.
struct ImageRefused {
    std::string message;
};

/// Reads the file as it stands, or decodes it when it is Intel HEX or S-record. Never throws.
std::variant<Image, ImageRefused> loadImage(const std::filesystem::path &path, std::size_t chipSize,
                                            SizeMismatch mismatch);

} // namespace sim
