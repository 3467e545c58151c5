// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "formats/ImageFlattening.h"
#include "formats/RecordReader.h"
#include "formats/RecordWriter.h"

#include <cstddef>
#include <cstdint>

// Text of records: however often the reader is interrupted, it comes to the same, in bounds that
// the text's length sets; and what was read can be written and read again.

namespace {

constexpr qint64 smallImage = qint64(1) << 20;

DecodedRecords decodedOf(RecordFormat format, const QByteArray &text, qsizetype turn) {
    RecordReader reader(format);
    qsizetype turns = 0;
    while (!reader.advance(text, turn))
        mustHold(++turns <= text.size() + 1, "every turn goes on");
    return reader.decoded();
}

bool areTheSame(const DecodedRecords &one, const DecodedRecords &other) {
    return one.bytes.pieces() == other.bytes.pieces() && one.entry == other.entry &&
           one.header == other.header && one.dataRecords == other.dataRecords &&
           one.troubles.kept() == other.troubles.kept() &&
           one.troubles.total() == other.troubles.total();
}

void checkPieces(const AddressedBytes &bytes) {
    qint64 end = -1;
    qint64 count = 0;
    for (const auto &[address, piece] : bytes.pieces()) {
        mustHold(address > end && !piece.isEmpty(), "pieces are apart and have bytes");
        end = address + piece.size();
        count += piece.size();
    }
    mustHold(end <= endOfAddresses, "addresses have 32 bits");
    mustHold(count == bytes.count(), "all bytes are counted");
}

void checkRoundTrip(RecordFormat format, const AddressedBytes &bytes, int recordLength) {
    const qint64 base = bytes.first();
    if (!canBeFlattened(bytes, base) || bytes.end() - base > smallImage)
        return;
    ImageFlattening flattening(bytes, base, '\xFF');
    while (!flattening.advance(1000)) {
    }
    const QByteArray &image = *flattening.image();
    RecordWriter writer({format, recordLength, base}, image.size());
    while (!writer.advance(image, 1000)) {
    }
    const QByteArray text = writer.takeText();
    const DecodedRecords again = decodedOf(format, text, text.size());
    mustHold(again.troubles.isEmpty(), "what was written has no trouble");
    mustHold(again.bytes.pieces() == AddressedBytes::Pieces{{base, image}},
             "what was written is read as it was");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    const int turn = 1 + input.number(255);
    const int recordLength = 1 + input.number(249);
    const QByteArray text = input.rest();
    const RecordFormat format = recordFormatOf(text).value_or(RecordFormat::IntelHex);
    const DecodedRecords whole = decodedOf(format, text, text.size() + 1);
    mustHold(areTheSame(whole, decodedOf(format, text, turn)), "turns change nothing");
    mustHold(2 * whole.bytes.count() <= text.size(), "two digits make a byte");
    mustHold(whole.troubles.total() <= text.size() + 1, "troubles have characters");
    checkPieces(whole.bytes);
    checkRoundTrip(format, whole.bytes, recordLength);
    return 0;
}
