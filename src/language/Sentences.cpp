// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/Sentences.h"

#include <QCoreApplication>
#include <QDir>

QString folderMayNotBeUsed(const QString &folder, const Failure &failure) {
    return QCoreApplication::translate("Sentences", "Nothing can run with the files in %1: %2.")
        .arg(QDir::toNativeSeparators(folder), failure.reason);
}

QString joinedSentences(const QString &sentence, const QString &following) {
    return following.isEmpty() ? sentence : sentence + u' ' + following;
}
