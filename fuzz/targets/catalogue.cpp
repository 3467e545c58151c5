// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "files/TextLines.h"
#include "language/DeviceListing.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

// The list of devices is cut into lines: every character is in one of them or ends one. Each line
// that is not empty is a name, in order.

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QString text = QString::fromUtf8(FuzzInput(data, size).rest());
    qsizetype lines = 0;
    qsizetype units = 0;
    QStringList names;
    LineCursor cursor(text);
    while (const auto line = cursor.next()) {
        mustHold(std::none_of(line->begin(), line->end(), isLineBreak), "a line has no line break");
        const QChar *end = line->data() + line->size();
        const bool isLast = end == text.constData() + text.size();
        mustHold(text.isEmpty() || isLast || isLineBreak(*end), "a line break follows each line");
        ++lines;
        units += line->size();
        if (!line->isEmpty())
            names.append(line->toString());
    }
    mustHold(units + lines - 1 == text.size(), "nothing is lost between the lines");
    const Result<DeviceListing> listing = readDeviceListing(text);
    mustHold(bool(listing) == (lines <= maxListLines), "only too many lines are refused");
    if (!listing)
        return 0;
    mustHold(listing->lines == lines && listing->names == names, "the names are the lines");
    mustHold(listing->looksCut == !text.endsWith(u'\n'), "a whole list ends with a line feed");
    return 0;
}
