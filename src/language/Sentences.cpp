// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/Sentences.h"

#include <QLocale>

QString joined(const QString &sentence, const QString &following) {
    return following.isEmpty() ? sentence : sentence + u' ' + following;
}

QString grouped(qint64 number) {
    return QLocale().toString(number);
}
