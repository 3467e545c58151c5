// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/Bench.h"

#include <cstring>
#include <string>

#include <system_error>
#include <unistd.h>
#include <utility>

namespace sim {
namespace {

constexpr const char *unsafeCharacters = "/\\:*?\"<>|";

FileError failure(const std::string &what, const std::filesystem::path &path, int error) {
    return FileError(what + " " + path.string() + ": " + std::strerror(error));
}

std::string safeName(std::string name) {
    std::size_t position = 0;
    while ((position = name.find_first_of(unsafeCharacters, position)) != std::string::npos)
        name[position] = '_';
    return name;
}

} // namespace

Bench::Bench(std::filesystem::path benchFolder, FirstContent content)
    : folder_(std::move(benchFolder)), firstContent_(content) {}

std::filesystem::path Bench::fileOf(const Chip &chip) const {
    return folder_ / (safeName(chip.name) + ".bin");
}

Bytes Bench::firstContentOf(const Chip &chip) const {
    const bool blankByNature = chip.technology == Technology::UvEprom;
    const bool blank = firstContent_ == FirstContent::Blank ||
                       (firstContent_ == FirstContent::Automatic && blankByNature);
    return blank ? Bytes(chip.size, erasedByte) : sampleContent(chip);
}

Bytes Bench::load(const Chip &chip) const {
    std::error_code error;
    if (!std::filesystem::exists(fileOf(chip), error))
        store(chip, firstContentOf(chip));
    Bytes content = readWholeFile(fileOf(chip));
    // A user may have put a file of another length there: the chip has the cells it has.
    content.resize(chip.size, erasedByte);
    return content;
}

void Bench::store(const Chip &chip, const Bytes &content) const {
    replace(fileOf(chip), content);
}

// The file has a byte for each test.
std::size_t Bench::countLogicTest() const {
    const std::filesystem::path file = folder_ / "logic-tests";
    std::error_code error;
    Bytes tests = std::filesystem::exists(file, error) ? readWholeFile(file) : Bytes();
    tests.push_back('\n');
    replace(file, tests);
    return tests.size();
}

void Bench::replace(const std::filesystem::path &file, const Bytes &content) const {
    std::error_code error;
    std::filesystem::create_directories(folder_, error);
    if (error)
        throw failure("cannot make the bench folder", folder_, error.value());
    std::filesystem::path fresh = file;
    fresh += "." + std::to_string(getpid()) + ".new";
    OutputFile(fresh).fill(content);
    std::filesystem::rename(fresh, file, error);
    if (error)
        throw failure("cannot replace", file, error.value());
}

} // namespace sim
