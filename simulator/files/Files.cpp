// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/Files.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>

namespace sim {
namespace {

FileError failure(const std::filesystem::path &path, const char *purpose, int error) {
    return FileError("Could not open file " + path.string() + " for " + purpose + ".\n" +
                     std::strerror(error));
}

std::FILE *openedOrStandard(const std::filesystem::path &path, const char *mode,
                            std::FILE *standard) {
    return path == standardStream ? standard : std::fopen(path.c_str(), mode);
}

} // namespace

OutputFile::OutputFile(const std::filesystem::path &target)
    : path_(target), file_(openedOrStandard(target, "wbe", stdout)) {
    if (!file_)
        throw failure(path_, "writing", errno);
}

void OutputFile::fill(const Bytes &content) {
    const std::size_t written = std::fwrite(content.data(), 1, content.size(), file_.get());
    const bool flushed = std::fflush(file_.get()) == 0;
    file_.reset();
    if (written != content.size() || !flushed)
        throw FileError("Could not write file " + path_.string() + ": " + std::strerror(errno));
}

Bytes readWholeFile(const std::filesystem::path &path) {
    const FileHandle file(openedOrStandard(path, "rbe", stdin));
    if (!file)
        throw failure(path, "reading", errno);
    Bytes content;
    std::array<std::uint8_t, 65536> piece{};
    while (const std::size_t length = std::fread(piece.data(), 1, piece.size(), file.get()))
        content.insert(content.end(), piece.begin(), piece.begin() + std::ptrdiff_t(length));
    return content;
}

} // namespace sim
