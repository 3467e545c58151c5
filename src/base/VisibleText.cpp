// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/VisibleText.h"

#include "base/Digits.h"

#include <QList>

#include <algorithm>

namespace {

struct CharacterRange {
    char32_t first, last;
};

/// What Unicode lets a program draw as nothing (Default_Ignorable_Code_Point) though its category
/// is that of letters and marks; and a pattern of Braille without dots.
constexpr CharacterRange emptyOnes[] = {
    {0x034f, 0x034f}, {0x115f, 0x1160}, {0x17b4, 0x17b5}, {0x180b, 0x180f},   {0x2800, 0x2800},
    {0x3164, 0x3164}, {0xfe00, 0xfe0f}, {0xffa0, 0xffa0}, {0xe0100, 0xe01ef},
};

bool isEmptyOne(char32_t character) {
    return std::ranges::any_of(emptyOnes, [character](const CharacterRange &range) {
        return range.first <= character && character <= range.last;
    });
}

/// Nothing is seen of it where it stands in a text, it looks like a space and is another character,
/// or it changes the order of others.
bool isUnseen(char32_t character) {
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_NotAssigned:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    case QChar::Separator_Space:
        return character != U' ';
    default:
        return isEmptyOne(character);
    }
}

QString escapeOf(char32_t character) {
    constexpr char32_t pastShort = 0x100;
    constexpr char32_t pastLong = 0x10000;
    const QString digits = QString::number(uint(character), hexadecimal);
    if (character < pastShort)
        return QStringLiteral("\\x") + digits.rightJustified(2, u'0');
    if (character < pastLong)
        return QStringLiteral("\\u") + digits.rightJustified(4, u'0');
    return QStringLiteral("\\U") + digits.rightJustified(8, u'0');
}

} // namespace

QString onOneLine(QString text) {
    const auto breaksLine = [](QChar unit) {
        return unit.category() == QChar::Other_Control || unit == QChar::LineSeparator ||
               unit == QChar::ParagraphSeparator;
    };
    std::replace_if(text.begin(), text.end(), breaksLine, u' ');
    return text;
}

QString visibleCharacter(char32_t character) {
    return isUnseen(character) ? escapeOf(character)
                               : QStringView(QChar::fromUcs4(character)).toString();
}

QString visibleText(QStringView text) {
    QString visible;
    for (const char32_t character : text.toUcs4())
        visible += visibleCharacter(character);
    return visible;
}
