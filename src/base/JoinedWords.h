// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

/// Those of \a words that say something, with \a separator between them.
inline QString joinedWords(QStringList words, QStringView separator) {
    words.removeAll(QString());
    return words.join(separator);
}

/// "pins, vectors and levels": \a words, at least one, as a list within a sentence.
inline QString listWords(QStringList words) {
    if (words.size() == 1)
        return words.first();
    const QString last = words.takeLast();
    return QCoreApplication::translate("JoinedWords", "%1 and %2")
        .arg(words.join(QCoreApplication::translate("JoinedWords", ", ")), last);
}
