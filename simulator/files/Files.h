// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace sim {

using Bytes = std::vector<std::uint8_t>;

/// What a byte that is not programmed holds.
constexpr std::uint8_t erasedByte = 0xFF;

/// A chip or a file of the user could not be read or written; what() is ready to be shown.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct FileCloser {
    void operator()(std::FILE *file) const {
        if (file != stdin && file != stdout)
            std::fclose(file);
    }
};

using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

/// The name that stands for standard input and standard output.
constexpr std::string_view standardStream = "-";

/// A file made empty at once and filled later, as the tool treats the file of a read: what stops
/// the run in between leaves it empty.
class OutputFile {
public:
    /// Throws FileError.
    explicit OutputFile(const std::filesystem::path &path);

    /// Writes `content` and closes the file. Throws FileError.
    void fill(const Bytes &content);

private:
    std::filesystem::path path_;
    FileHandle file_;
};

/// The whole file, or as much of it as can be read: a folder is empty. Throws FileError when it
/// cannot be opened.
Bytes readWholeFile(const std::filesystem::path &path);

} // namespace sim
