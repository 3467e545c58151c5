// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "image/DisplayText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

// After any edits the characters are those of a buffer that is decoded for the first time.

namespace {

struct Edit {
    qsizetype offset = 0;
    QByteArray bytes;
    /// The buffer ends behind them, as where an edit that had lengthened it is taken back.
    bool cutsOff = false;
};

std::vector<Edit> editsFrom(FuzzInput &input, qsizetype start) {
    std::vector<Edit> edits;
    for (int count = input.number(8); count > 0; --count) {
        const qsizetype offset = start + input.number(255) * 8 + input.number(7);
        const bool cutsOff = input.number(7) == 1;
        edits.push_back({offset, input.bytes(input.number(20)), cutsOff});
    }
    return edits;
}

/// Gives the bytes that are other ones now.
ByteRange carryOut(const Edit &edit, QByteArray &buffer) {
    const qsizetype offset = std::min(edit.offset, buffer.size());
    const qsizetype end = offset + edit.bytes.size();
    buffer.resize(edit.cutsOff ? end : std::max(buffer.size(), end));
    std::copy(edit.bytes.begin(), edit.bytes.end(), buffer.data() + offset);
    return {offset, edit.bytes.size()};
}

void check(const DisplayText &text, const ByteBuffer &buffer) {
    const DisplayText fresh(buffer);
    mustHold(text.byteLength() == fresh.byteLength(), "every byte is decoded");
    mustHold(text.length() == fresh.length(), "it is as long as the text");
    mustHold(text.isMultiByte() == fresh.isMultiByte(), "it is text of the same kind");
    mustHold(text.units(0, text.length()) == fresh.units(0, fresh.length()), "it is the text");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    // Letters before the bytes, so that these lie where two blocks meet.
    const qsizetype letters = input.number(8) * 512;
    const std::vector<Edit> edits = editsFrom(input, letters);
    const auto buffer = std::make_shared<QByteArray>(QByteArray(letters, 'a') + input.rest());
    DisplayText text(buffer);
    for (const Edit &edit : edits) {
        text.update(buffer, carryOut(edit, *buffer));
        check(text, buffer);
    }
    return 0;
}
