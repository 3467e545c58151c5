// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/TextLines.h"

#include <algorithm>

bool isLineBreak(QChar character) {
    switch (character.unicode()) {
    case u'\n':
    case u'\v':
    case u'\f':
    case u'\r':
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
    case 0x0085: // next line
        return true;
    default:
        return false;
    }
}

QList<QStringView> linesOf(QStringView text) {
    QList<QStringView> lines;
    auto begin = text.begin();
    while (true) {
        const auto end = std::find_if(begin, text.end(), isLineBreak);
        lines.append(QStringView(begin, end));
        if (end == text.end())
            return lines;
        begin = end + 1;
    }
}
