// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "widgets/ConsoleStorage.h"

// The storage holds the end of all that came, within its limit, from a good start on.

namespace {

void checkStart(const QString &everything, const ConsoleStorage &storage) {
    const QString kept = storage.text();
    const qsizetype dropped = everything.size() - kept.size();
    mustHold(storage.hasTrimmed() == (dropped > 0), "it tells that text was dropped");
    if (dropped == 0 || kept.isEmpty())
        return;
    const bool inPair = everything[dropped - 1].isHighSurrogate() && kept[0].isLowSurrogate();
    mustHold(!inPair, "it does not begin inside a character");
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
        mustHold(tells == (storage.hasTrimmed() && !hasTold), "the first dropping is told, once");
        hasTold = hasTold || tells;
        mustHold(storage.length() <= limit, "the limit holds");
        mustHold(storage.text().size() == storage.length(), "the length is that of the text");
        mustHold(everything.endsWith(storage.text()), "it is the end of what came");
        checkStart(everything, storage);
    }
    storage.clear();
    mustHold(storage.text().isEmpty() && !storage.hasTrimmed(), "clearing forgets everything");
    return 0;
}
