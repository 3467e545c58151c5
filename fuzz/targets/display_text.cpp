// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "image/DisplayText.h"

#include <QStringDecoder>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>

// The characters of a buffer, in any piece, are those of the buffer decoded as a whole.

namespace {

QString decoded(const QByteArray &bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom |
                                                     QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return decoder.hasError() ? QString::fromLatin1(bytes) : text;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    // Letters before the bytes, so that these lie where two blocks meet.
    const qsizetype letters = input.number(8) * 512;
    const qsizetype position = letters + input.number(255) * 8 + input.number(7);
    const qsizetype count = input.number(255);
    const qsizetype edited = letters + input.number(255) * 8;
    const char byte = char(input.number(255));
    const auto buffer = std::make_shared<QByteArray>(QByteArray(letters, 'a') + input.rest());
    const QString expected = decoded(*buffer);

    const DisplayText text(buffer);
    mustHold(text.byteLength() == buffer->size(), "every byte is decoded");
    mustHold(text.length() == expected.size(), "it is as long as the text");
    mustHold(text.isMultiByte() == (expected.size() < buffer->size()),
             "multi-byte text is shorter");
    mustHold(text.units(0, text.length() + 1) == expected, "all of it is the text");
    mustHold(text.units(position, count) == expected.mid(position, count),
             "a piece is a piece of it");
    for (qsizetype at = 0; at < expected.size(); at += 1 + expected.size() / 64)
        mustHold(text.units(at, 1) == expected.mid(at, 1), "a unit is a unit of it");

    if (edited < buffer->size())
        buffer->data()[edited] = byte;
    mustHold(text.units(position, count).size() <= count, "an edit makes no piece longer");
    buffer->resize(std::min(buffer->size(), edited));
    text.units(0, text.length());
    return 0;
}
