// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

/// Those of \a words that say something, with \a separator between them.
inline QString joinedWords(QStringList words, QStringView separator) {
    words.removeAll(QString());
    return words.join(separator);
}
