// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "language/ImageEncoding.h"

#include <QRegularExpression>

#include <cstddef>
#include <cstdint>

// What the tool would take a file for is what a pattern says of its first bytes.

namespace {

ImageEncoding expectedOf(const QByteArray &bytes) {
    static const QRegularExpression record(
        QStringLiteral("\\A[\\r\\n]*+([:S])[0-9A-Fa-f]*+[\\r\\n]"));
    const QRegularExpressionMatch match = record.match(QString::fromLatin1(bytes));
    if (!match.hasMatch())
        return ImageEncoding::Raw;
    return match.captured(1) == u':' ? ImageEncoding::IntelHex : ImageEncoding::SRecord;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray bytes = FuzzInput(data, size).rest();
    const ImageEncoding encoding = encodingForTool(bytes);
    mustHold(encoding == expectedOf(bytes), "the encoding is what its first line says");
    mustHold(encoding == ImageEncoding::Raw || encodingForTool(bytes + '\n') == encoding,
             "what follows the first line changes nothing");
    mustHold(nameOf(encoding).isEmpty() == (encoding == ImageEncoding::Raw), "text has a name");
    return 0;
}
