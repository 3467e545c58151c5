// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/BoundedText.h"

#include "base/NumberWords.h"

#include <QCoreApplication>
#include <QList>

namespace {

/// Room for the words about the middle, so that they are never longer than what they stand for.
constexpr qsizetype roomForWords = 100;

} // namespace

QString boundedText(const QString &text, qsizetype longest) {
    if (text.size() <= longest)
        return text;
    qsizetype begin = (longest - roomForWords) / 2;
    qsizetype end = text.size() - begin;
    // Both halves of a character go.
    begin -= text[begin - 1].isHighSurrogate() ? 1 : 0;
    end += text[end].isLowSurrogate() ? 1 : 0;
    const qsizetype left = text.sliced(begin, end - begin).toUcs4().size();
    return text.first(begin) +
           QCoreApplication::translate("BoundedText", " (%1 characters are not shown) ")
               .arg(grouped(left)) +
           text.sliced(end);
}
