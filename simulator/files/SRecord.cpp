// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/HexDigits.h"
#include "files/HexRecords.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace sim {
namespace {

constexpr char recordMark = 'S';
constexpr std::size_t markLength = 2; ///< the letter and the type

bool isData(char type) {
    return type >= '1' && type <= '3';
}

bool isEnd(char type) {
    return type >= '7' && type <= '9';
}

bool isKnown(char type) {
    return isData(type) || isEnd(type) || type == '0' || type == '5' || type == '6';
}

/// Bytes of the address: four for S3 and its end record S7, three for S2 and S8, otherwise two.
std::size_t addressLength(char type) {
    constexpr std::size_t longest = 4;
    if (type == '3' || type == '7')
        return longest;
    return type == '2' || type == '8' ? longest - 1 : 2;
}

/// What is wrong with the line as a whole; nothing when it is a record.
std::string_view complaintAboutRecord(std::string_view line, const Bytes &record) {
    if (line.size() < markLength || line.front() != recordMark || !isKnown(line[1]))
        return "bad record type";
    const bool whole = line.size() == markLength + 2 * record.size();
    if (!whole || record.size() < 2 + addressLength(line[1]) ||
        record.front() + std::size_t{1} != record.size())
        return "bad count";
    constexpr std::uint8_t allBits = 0xFF;
    return sumOf(record) != allBits ? "bad checksum" : "";
}

std::string recordText(char type, std::size_t address, const Bytes &data) {
    constexpr std::size_t byteBits = 8;
    const std::size_t length = addressLength(type);
    Bytes record{std::uint8_t(length + data.size() + 1)};
    for (std::size_t i = length; i > 0; --i)
        record.push_back(std::uint8_t(address >> byteBits * (i - 1)));
    record.insert(record.end(), data.begin(), data.end());
    record.push_back(std::uint8_t(~sumOf(record)));
    return std::string{recordMark, type} + digitsOfBytes(record) + "\n";
}

} // namespace

bool isSRecord(std::string_view content) {
    return beginsWithRecord(content, recordMark);
}

Records decodeSRecord(std::string_view content, std::size_t chipSize) {
    RecordImage image{Bytes(chipSize, erasedByte), {}};
    std::size_t lineNumber = 1;
    for (;;) {
        const std::string_view line = takeRecordLine(content, lineNumber);
        if (line.empty())
            return RecordError{"Error: no end of file record found."};
        const Bytes record = bytesOfDigits(line.substr(std::min(markLength, line.size())));
        if (const auto complaint = complaintAboutRecord(line, record); !complaint.empty())
            return RecordError{"Error on line " + std::to_string(lineNumber) + ": " +
                               std::string(complaint) + "."};
        const char type = line[1];
        const std::size_t length = addressLength(type);
        const Bytes data(record.begin() + 1 + std::ptrdiff_t(length), record.end() - 1);
        if (isEnd(type))
            return image;
        if (type == '0')
            image.title.assign(data.begin(), data.end());
        else if (isData(type))
            place(data, bigEndian(record, 1, length), image.image);
    }
}

std::string encodeSRecord(const Bytes &content) {
    constexpr std::size_t lineLength = 16;
    constexpr std::size_t shortAddresses = 0x10000;
    const bool isShort = content.size() <= shortAddresses;
    std::string text;
    for (std::size_t address = 0; address < content.size(); address += lineLength) {
        const auto start = content.begin() + std::ptrdiff_t(address);
        const auto length = std::min(lineLength, content.size() - address);
        text +=
            recordText(isShort ? '1' : '3', address, Bytes(start, start + std::ptrdiff_t(length)));
    }
    return text + recordText(isShort ? '9' : '7', 0, {});
}

} // namespace sim
