// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/FuseText.h"

#include "base/Digits.h"
#include "files/TextLines.h"

#include <algorithm>

namespace {

/// The most hexadecimal digits of a fuse, whose value has 32 bits.
constexpr int maxDigits = 8;

bool fitsIntoName(QChar character) {
    return character.isPrint() && !character.isSpace() && character != u'=';
}

/// The value of "0x62", with the number of its digits.
std::optional<Fuse> readValue(QStringView text) {
    if (!text.startsWith(u"0x", Qt::CaseInsensitive))
        return std::nullopt;
    const QStringView digits = text.sliced(2);
    if (digits.isEmpty() || digits.size() > maxDigits)
        return std::nullopt;
    Fuse fuse;
    fuse.digits = int(digits.size());
    for (const QChar digit : digits) {
        const std::optional<int> value = digitValue(digit, hexadecimal);
        if (!value)
            return std::nullopt;
        fuse.value = fuse.value * hexadecimal + quint32(*value);
    }
    return fuse;
}

std::optional<Fuse> readFuse(QStringView line) {
    const qsizetype equals = line.indexOf(u'=');
    if (equals < 0)
        return std::nullopt;
    const QStringView name = line.first(equals).trimmed();
    if (name.isEmpty() || !std::all_of(name.begin(), name.end(), fitsIntoName))
        return std::nullopt;
    std::optional<Fuse> fuse = readValue(line.sliced(equals + 1).trimmed());
    if (fuse)
        fuse->name = name.toString();
    return fuse;
}

/// Takes the first line, and its end, off \a text.
QByteArrayView takeLine(QByteArrayView &text) {
    const auto *const end = std::find_if(text.begin(), text.end(), endsLine);
    const QByteArrayView line = text.first(end - text.begin());
    text = text.sliced(line.size() + lineEndAt(text, line.size()));
    return line;
}

} // namespace

QList<FuseLine> readFuseText(QByteArrayView text) {
    QList<FuseLine> lines;
    while (!text.isEmpty()) {
        const QString line = QString::fromUtf8(takeLine(text)).trimmed();
        if (!line.isEmpty())
            lines.append({line, readFuse(line)});
    }
    return lines;
}

qsizetype countFuses(const QList<FuseLine> &lines) {
    return std::count_if(lines.begin(), lines.end(),
                         [](const FuseLine &line) { return line.fuse.has_value(); });
}
