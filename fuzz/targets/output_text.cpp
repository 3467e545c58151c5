// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "process/OutputDecoder.h"

#include <QByteArrayView>

#include <algorithm>
#include <cstddef>
#include <cstdint>

// The bytes of a stream give the same text wherever they are cut, and text comes out as it went in.

namespace {

QString decodedInPieces(const QByteArray &bytes, qsizetype length) {
    OutputDecoder decoder;
    QString text;
    for (qsizetype at = 0; at < bytes.size(); at += length)
        text += decoder.decode(
            QByteArrayView(bytes).sliced(at).first(std::min(length, bytes.size() - at)));
    return text + decoder.flush();
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    const qsizetype length = 2 + input.number(30);
    const QByteArray bytes = input.rest();
    const QString whole = decodedInPieces(bytes, bytes.size() + 1);
    mustHold(decodedInPieces(bytes, 1) == whole, "byte by byte it is the same");
    mustHold(decodedInPieces(bytes, length) == whole, "in pieces it is the same");
    mustHold(whole.isValidUtf16(), "no half of a character comes out");
    const bool isText = QByteArrayView(bytes).isValidUtf8();
    mustHold((whole.toUtf8() == bytes) == isText, "text, and only text, is kept as it was");
    return 0;
}
