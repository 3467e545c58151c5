// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "image/FuseText.h"

#include <cstddef>
#include <cstdint>

// No line of a text of fuses is lost, and a fuse is what its line says.

namespace {

QByteArray withoutBlankLines(const QByteArray &text) {
    QByteArray lines;
    for (const QByteArray &line : QByteArray(text).replace('\r', '\n').split('\n'))
        if (const QString shown = QString::fromUtf8(line).trimmed(); !shown.isEmpty())
            lines += shown.toUtf8() + '\n';
    return lines;
}

QByteArray linesOf(const QList<FuseLine> &lines) {
    QByteArray text;
    for (const FuseLine &line : lines)
        text += line.text.toUtf8() + '\n';
    return text;
}

/// Each fuse in one of the dialects.
QByteArray fusesOf(const QList<FuseLine> &lines, const char *equals) {
    QByteArray text;
    for (const FuseLine &line : lines)
        if (line.fuse)
            text +=
                line.fuse->name.toUtf8() + equals + "0x" +
                QByteArray::number(line.fuse->value, 16).rightJustified(line.fuse->digits, '0') +
                '\n';
    return text;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray text = FuzzInput(data, size).rest();
    const QList<FuseLine> lines = readFuseText(text);
    mustHold(linesOf(lines) == withoutBlankLines(text), "each line is there as it stands");
    const QList<FuseLine> again = readFuseText(fusesOf(lines, "="));
    mustHold(again.size() == countFuses(lines) && countFuses(again) == again.size(),
             "each fuse is one in the newer dialect");
    mustHold(fusesOf(readFuseText(fusesOf(lines, " = ")), "=") == fusesOf(lines, "="),
             "both dialects say the same");
    return 0;
}
