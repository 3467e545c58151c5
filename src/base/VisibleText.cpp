// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/VisibleText.h"

#include "base/Digits.h"

#include <QChar>
#include <QList>

namespace {

/// Nothing is seen of it where it stands in a text, or it changes the order of others.
bool isUnseen(char32_t character) {
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_NotAssigned:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
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
