// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "grid/CellEdit.h"
#include "grid/GridColumns.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

// An entry writes where it says and nowhere else, and what it tells is enough to take it back.

namespace {

void checkEdit(const QByteArray &before, const QByteArray &after, const CellEdit &edit) {
    mustHold(edit.offset >= 0 && edit.offset < before.size(), "an entry begins at a byte");
    mustHold(after.size() == before.size() + edit.grewBy && edit.grewBy >= 0, "the growth is told");
    mustHold(edit.replaced.size() == edit.bytesWritten - edit.grewBy, "what was replaced is kept");
    QByteArray undone = after.first(before.size());
    undone.replace(edit.offset, edit.replaced.size(), edit.replaced);
    mustHold(undone == before, "an entry can be taken back");
    mustHold(!edit.rejected || after == before, "what was rejected changes nothing");
    mustHold(edit.grewBy == 0 || edit.offset + edit.bytesWritten == after.size(),
             "what was appended was written");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    const int column = input.number(gridColumns + 1) - 1;
    const qint64 row = input.number(255) == 255 ? -1 : input.number(9);
    const qsizetype hidden = input.number(3);
    const bool isWide = input.truth();
    const QByteArray typed = input.line();
    const QString entry = isWide ? anyText(typed) : QString::fromUtf8(typed);
    const QByteArray before = input.rest();

    QByteArray after = before;
    const qsizetype shown = std::max<qsizetype>(0, before.size() - hidden);
    const CellEditOutcome outcome = commitEntry(after, shown, entry, column, row);
    if (!outcome)
        mustHold(after == before, "an abandoned entry changes nothing");
    else
        checkEdit(before, after, *outcome);
    const bool isByte = byteIndex(row, column) < quint64(shown) && column != charactersColumn;
    mustHold(outcome.has_value() == (isByte && !entry.isEmpty()),
             "an entry in a byte's cell counts");
    return 0;
}
