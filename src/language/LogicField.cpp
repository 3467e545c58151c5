// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/LogicField.h"

#include <QStringView>

namespace {

/// The escape character before them is not looked for: a field may have lost it.
constexpr QStringView brightRed = u"[0;91m";
constexpr QStringView reset = u"[0m";

/// A bad field is bright red, and a minus sign follows the expected level.
bool isMarkedBad(const QString &field) {
    return field.size() > 1 && (field.endsWith(u'-') || field.contains(brightRed));
}

QChar letterOf(const QString &field) {
    const qsizetype begin = field.startsWith(u'\x1b') ? field.indexOf(u'm') + 1 : 0;
    const bool isLetter =
        begin < field.size() && QStringView(u"01LHCZXGV").contains(field.at(begin));
    return isLetter ? field.at(begin) : QChar();
}

} // namespace

ShownField shownField(const QString &field) {
    if (const qsizetype at = field.indexOf(reset); at >= 0)
        return {field.sliced(at + reset.size()), false};
    if (const qsizetype at = field.indexOf(brightRed); at >= 0)
        return {field.sliced(at + brightRed.size()).section(u'-', 0, 0), true};
    return {field, false};
}

PinLevel pinLevel(const QString &field) {
    return {letterOf(field), isMarkedBad(field)};
}
