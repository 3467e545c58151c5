// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "image/PastedText.h"

#include <cstddef>
#include <cstdint>

// Text from the clipboard: however often the reader is interrupted, it comes to the same; bytes are
// no more than the text has characters; and bytes that are written out are read as they were.

namespace {

using Bytes = Result<QByteArray, PasteTrouble>;

Bytes readIn(const QString &text, PastedText::As as, qsizetype turn) {
    PastedText reader(text, as);
    qsizetype turns = 0;
    while (!reader.advance(turn))
        mustHold(++turns <= text.size() + 1, "every turn goes on");
    return reader.result();
}

bool areTheSame(const Bytes &one, const Bytes &other) {
    if (one || other)
        return one && other && *one == *other;
    return one.failure()->kind == other.failure()->kind &&
           one.failure()->line == other.failure()->line &&
           one.failure()->column == other.failure()->column &&
           one.failure()->part == other.failure()->part;
}

void checkRoundTrip(const QByteArray &bytes) {
    if (bytes.isEmpty())
        return;
    const QString hex = QString::fromLatin1(bytes.toHex(' '));
    const QString array = QStringLiteral("{0x%1}").arg(
        QString::fromLatin1(bytes.toHex(' ')).replace(u' ', QStringLiteral(", 0x")));
    for (const QString &text : {hex, array}) {
        const Bytes read = readIn(text, PastedText::As::Bytes, text.size() + 1);
        mustHold(read && *read == bytes, "what was written is read");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    const int turn = 1 + input.number(63);
    const auto as = input.truth() ? PastedText::As::Characters : PastedText::As::Bytes;
    const bool isLatin = input.truth();
    const QByteArray bytes = input.rest();
    const QString text = isLatin ? QString::fromLatin1(bytes) : anyText(bytes);
    const Bytes whole = readIn(text, as, text.size() + 1);
    mustHold(areTheSame(whole, readIn(text, as, turn)), "turns change nothing");
    mustHold(!whole || whole->size() <= text.size(), "a byte takes a character");
    if (const PasteTrouble *trouble = whole.failure())
        mustHold(trouble->line >= 1 && trouble->column >= 1 && trouble->column <= text.size() + 1 &&
                     !trouble->part.contains(u'\n'),
                 "trouble has a place in the text");
    else
        mustHold(!whole->isEmpty(), "no bytes are trouble");
    checkRoundTrip(bytes);
    return 0;
}
