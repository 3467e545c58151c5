// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/TextLines.h"

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

std::optional<QStringView> LineCursor::next() {
    if (!rest_)
        return std::nullopt;
    const auto end = std::find_if(rest_->begin(), rest_->end(), isLineBreak);
    const QStringView line(rest_->begin(), end);
    if (end == rest_->end())
        rest_.reset();
    else
        rest_ = QStringView(end + 1, rest_->end());
    return line;
}
