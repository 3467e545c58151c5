// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "widgets/ConsoleStorage.h"

#include <cstddef>
#include <cstdint>

// The storage holds the end of all that came, within its limit, from a good start on.

namespace {

/// True if old text was dropped.
bool checkStart(const QString &everything, const ConsoleStorage &storage) {
    const QString kept = storage.text();
    const qsizetype dropped = everything.size() - kept.size();
    if (dropped == 0 || kept.isEmpty())
        return dropped > 0;
    const bool inPair = everything[dropped - 1].isHighSurrogate() && kept[0].isLowSurrogate();
    mustHold(!inPair, "it does not begin inside a character");
    return true;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    const qsizetype limit = 1 + input.number(255) * 4;
    const bool isWide = input.truth();
    ConsoleStorage storage(limit);
    QString everything = QStringLiteral("");
    bool hasTold = false;
    while (!input.isUsedUp()) {
        const QByteArray bytes = input.bytes(input.number(255));
        const QString piece = isWide ? anyText(bytes) : QString::fromUtf8(bytes);
        everything += piece;
        const bool tells = storage.append(piece);
        mustHold(storage.length() <= limit, "the limit holds");
        mustHold(storage.text().size() == storage.length(), "the length is that of the text");
        mustHold(everything.endsWith(storage.text()), "it is the end of what came");
        const bool hasDropped = checkStart(everything, storage);
        mustHold(tells == (hasDropped && !hasTold), "the first dropping is told, once");
        hasTold = hasTold || tells;
    }
    storage.clear();
    mustHold(storage.text().isEmpty() && storage.length() == 0, "clearing forgets everything");
    return 0;
}
