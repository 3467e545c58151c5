// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "image/PastedText.h"

// Text from the clipboard: however often the reader is interrupted, it comes to the same; bytes are
// no more than the text has characters; and bytes that are written out are read as they were.

namespace {

PastedText readIn(const QString &text, PastedText::As as, qsizetype turn) {
    PastedText reader(text, as);
    qsizetype turns = 0;
    while (!reader.advance(turn))
        mustHold(++turns <= text.size() + 1, "every turn goes on");
    return reader;
}

bool areTheSame(const PastedText &one, const PastedText &other) {
    if (!one.trouble() || !other.trouble())
        return !one.trouble() && !other.trouble() && one.bytes() == other.bytes();
    return one.trouble()->kind == other.trouble()->kind &&
           one.trouble()->line == other.trouble()->line &&
           one.trouble()->column == other.trouble()->column &&
           one.trouble()->part == other.trouble()->part;
}

void checkRoundTrip(const QByteArray &bytes) {
    if (bytes.isEmpty())
        return;
    const QString hex = QString::fromLatin1(bytes.toHex(' '));
    const QString array = QStringLiteral("{0x%1}").arg(
        QString::fromLatin1(bytes.toHex(' ')).replace(u' ', QStringLiteral(", 0x")));
    for (const QString &text : {hex, array}) {
        const PastedText reader = readIn(text, PastedText::As::Bytes, text.size() + 1);
        mustHold(!reader.trouble() && reader.bytes() == bytes, "what was written is read");
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
    const PastedText whole = readIn(text, as, text.size() + 1);
    mustHold(areTheSame(whole, readIn(text, as, turn)), "turns change nothing");
    mustHold(whole.bytes().size() <= text.size(), "a byte takes a character");
    if (const auto &trouble = whole.trouble())
        mustHold(trouble->line >= 1 && trouble->column >= 1 && trouble->column <= text.size() + 1 &&
                     !trouble->part.contains(u'\n'),
                 "trouble has a place in the text");
    else
        mustHold(!whole.bytes().isEmpty(), "no bytes are trouble");
    checkRoundTrip(bytes);
    return 0;
}
