// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "ReportText.h"
#include "language/ToolReportReader.h"

#include <cstddef>
#include <cstdint>

// What the tool prints means the same wherever it is cut, and whichever way its lines end.

namespace {

QString textOfPieces(const QString &said, qsizetype length, bool asksMeanwhile = false) {
    ToolReportReader reader;
    for (qsizetype at = 0; at < said.size(); at += length) {
        reader.take(QStringView(said).mid(at, length));
        if (asksMeanwhile)
            reader.report();
    }
    return textOf(reader.report());
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    const qsizetype length = 2 + input.number(40);
    const QString said = QString::fromUtf8(input.rest());
    const QString whole = textOfPieces(said, said.size() + 1);
    mustHold(textOfPieces(said, 1) == whole, "unit by unit it means the same");
    mustHold(textOfPieces(said, length, true) == whole,
             "in pieces it means the same, asked or not");
    QString returned = said;
    returned.replace(u'\n', u'\r');
    mustHold(textOfPieces(returned, length) == whole, "a return ends a line as a feed does");
    return 0;
}
