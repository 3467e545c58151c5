// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/Sentences.h"

#include <QCoreApplication>
#include <QDir>

QString folderOfAnotherWindow(const QString &folder) {
    return QCoreApplication::translate("Sentences",
                                       "Another window works with %1, so nothing runs here.")
        .arg(QDir::toNativeSeparators(folder));
}

QString joinedSentences(const QString &sentence, const QString &following) {
    return following.isEmpty() ? sentence : sentence + u' ' + following;
}
