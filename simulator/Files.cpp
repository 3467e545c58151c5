#include "Files.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <string>

namespace sim {
namespace {

FileError failure(const std::filesystem::path &path, const char *purpose, int error) {
    return FileError("Could not open file " + path.string() + " for " + purpose + ": " +
                     std::strerror(error));
}

} // namespace

OutputFile::OutputFile(const std::filesystem::path &target)
    : path_(target), file_(std::fopen(target.c_str(), "wbe")) {
    if (!file_)
        throw failure(path_, "writing", errno);
}

void OutputFile::fill(const Bytes &content) {
    const std::size_t written = std::fwrite(content.data(), 1, content.size(), file_.get());
    const bool closed = std::fclose(file_.release()) == 0;
    if (written != content.size() || !closed)
        throw FileError("Could not write file " + path_.string() + ": " + std::strerror(errno));
}

Bytes readWholeFile(const std::filesystem::path &path) {
    const FileHandle file(std::fopen(path.c_str(), "rbe"));
    if (!file)
        throw failure(path, "reading", errno);
    Bytes content;
    std::array<std::uint8_t, 65536> piece{};
    while (const std::size_t length = std::fread(piece.data(), 1, piece.size(), file.get()))
        content.insert(content.end(), piece.begin(),
                       piece.begin() + static_cast<std::ptrdiff_t>(length));
    if (std::ferror(file.get()) != 0)
        throw failure(path, "reading", errno);
    return content;
}

} // namespace sim
