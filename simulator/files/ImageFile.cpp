// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/ImageFile.h"

#include "files/HexRecords.h"

#include <algorithm>
#include <utility>

namespace sim {
namespace {

using Loaded = std::variant<Image, ImageRefused>;

Loaded imageOfRecords(const Records &records, const std::string &kind) {
    if (const auto *error = std::get_if<RecordError>(&records))
        return ImageRefused{error->message + "\n"};
    const auto &found = std::get<RecordImage>(records);
    const std::string title = found.title.empty() ? "" : found.title + "\n";
    return Image{found.image, title + "Found " + kind + " file.\n"};
}

Loaded imageOfBytes(Bytes bytes, std::size_t chipSize, SizeMismatch mismatch) {
    if (bytes.size() == chipSize)
        return Image{std::move(bytes), {}};
    const std::string complaint = "Incorrect file size: " + std::to_string(bytes.size()) +
                                  " (needed " + std::to_string(chipSize);
    if (mismatch == SizeMismatch::Refused)
        return ImageRefused{complaint + ", use -s/S to ignore)\n"};
    bytes.resize(std::min(bytes.size(), chipSize));
    return Image{std::move(bytes),
                 mismatch == SizeMismatch::Warned ? "Warning: " + complaint + ")\n" : ""};
}

} // namespace

Loaded loadImage(const std::filesystem::path &path, std::size_t chipSize, SizeMismatch mismatch) {
    Bytes bytes;
    try {
        bytes = readWholeFile(path);
    } catch (const FileError &error) {
        return ImageRefused{std::string(error.what()) + "\n"};
    }
    if (bytes.empty())
        return ImageRefused{"No data to read.\n"};
    const std::string text(bytes.begin(), bytes.end());
    if (isIntelHex(text))
        return imageOfRecords(decodeIntelHex(text, chipSize), "Intel hex");
    if (isSRecord(text))
        return imageOfRecords(decodeSRecord(text, chipSize), "Motorola S-Record");
    return imageOfBytes(std::move(bytes), chipSize, mismatch);
}

} // namespace sim
