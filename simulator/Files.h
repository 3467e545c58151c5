#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <vector>

namespace sim {

using Bytes = std::vector<std::uint8_t>;

/// A chip or a file of the user could not be read or written; what() is ready to be shown.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct FileCloser {
    void operator()(std::FILE *file) const { std::fclose(file); }
};

using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

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

/// The whole file. Throws FileError.
Bytes readWholeFile(const std::filesystem::path &path);

} // namespace sim
