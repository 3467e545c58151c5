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

constexpr char mark = ':';
constexpr std::size_t overhead = 5; ///< count, address, type and checksum
constexpr std::size_t headLength = 4;

enum RecordType : std::uint8_t {
    Data = 0,
    EndOfFile = 1,
    SegmentAddress = 2,
    SegmentStart = 3,
    LinearAddress = 4,
    LinearStart = 5,
};

/// What is wrong with the line as a whole; nothing when it is a record.
std::string_view complaintAbout(std::string_view line, const Bytes &record) {
    if (line.front() != mark)
        return "bad record type";
    const bool whole = line.size() == 1 + 2 * record.size();
    if (!whole || record.size() < overhead || record.front() + overhead != record.size())
        return "bad count";
    if (sumOf(record) != 0)
        return "bad checksum";
    return record[headLength - 1] > LinearStart ? "bad record type" : "";
}

std::string recordText(std::size_t address, RecordType type, const Bytes &data) {
    constexpr unsigned byteBits = 8;
    Bytes record;
    record.reserve(data.size() + overhead);
    record.push_back(std::uint8_t(data.size()));
    record.push_back(std::uint8_t(address >> byteBits));
    record.push_back(std::uint8_t(address));
    record.push_back(type);
    record.insert(record.end(), data.begin(), data.end());
    record.push_back(std::uint8_t(-sumOf(record)));
    return mark + digitsOfBytes(record) + "\n";
}

} // namespace

bool isIntelHex(std::string_view content) {
    return beginsWithRecord(content, mark);
}

Records decodeIntelHex(std::string_view content, std::size_t chipSize) {
    constexpr int segmentShift = 4;
    constexpr int linearShift = 16;
    RecordImage image{Bytes(chipSize, erasedByte), {}};
    std::size_t base = 0;
    std::size_t lineNumber = 1;
    for (;;) {
        const std::string_view line = takeRecordLine(content, lineNumber);
        if (line.empty())
            return RecordError{"Error: no end of file record found."};
        const Bytes record = bytesOfDigits(line.substr(1));
        if (const auto complaint = complaintAbout(line, record); !complaint.empty())
            return RecordError{"Error on line " + std::to_string(lineNumber) + ": " +
                               std::string(complaint) + "."};
        const Bytes data(record.begin() + headLength, record.end() - 1);
        const std::uint8_t type = record[headLength - 1];
        if (type == EndOfFile)
            return image;
        if (type == Data)
            place(data, base + bigEndian(record, 1, 2), image.image);
        else if (type == SegmentAddress)
            base = bigEndian(data, 0, data.size()) << segmentShift;
        else if (type == LinearAddress)
            base = bigEndian(data, 0, data.size()) << linearShift;
    }
}

std::string encodeIntelHex(const Bytes &content) {
    constexpr std::size_t lineLength = 16;
    constexpr std::size_t bank = 0x10000;
    constexpr std::size_t byteValues = 0x100;
    std::string text;
    for (std::size_t address = 0; address < content.size(); address += lineLength) {
        if (address % bank == 0 && address > 0)
            text += recordText(
                0, LinearAddress,
                {std::uint8_t(address / bank / byteValues), std::uint8_t(address / bank)});
        const auto start = content.begin() + std::ptrdiff_t(address);
        const auto length = std::min(lineLength, content.size() - address);
        text += recordText(address % bank, Data, Bytes(start, start + std::ptrdiff_t(length)));
    }
    return text + recordText(0, EndOfFile, {});
}

} // namespace sim
