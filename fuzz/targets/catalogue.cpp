// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "files/TextLines.h"

#include <algorithm>

// The list of devices is cut into lines: every character is in one of them or ends one.

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QString text = QString::fromUtf8(FuzzInput(data, size).rest());
    qsizetype lines = 0;
    qsizetype units = 0;
    LineCursor cursor(text);
    while (const auto line = cursor.next()) {
        mustHold(std::none_of(line->begin(), line->end(), isLineBreak), "a line has no line break");
        const QChar *end = line->data() + line->size();
        const bool isLast = end == text.constData() + text.size();
        mustHold(text.isEmpty() || isLast || isLineBreak(*end), "a line break follows each line");
        ++lines;
        units += line->size();
    }
    mustHold(units + lines - 1 == text.size(), "nothing is lost between the lines");
    return 0;
}
