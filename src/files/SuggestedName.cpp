// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/SuggestedName.h"

#include <QRegularExpression>

QString suggestedName(const QString &device, const QString &suffix) {
    static const QRegularExpression unfit(QStringLiteral("[^A-Za-z0-9@._+=-]+"));
    QString name = device.trimmed().replace(unfit, QStringLiteral("_"));
    if (name.isEmpty() || name.startsWith(u'.'))
        name.prepend(QStringLiteral("chip"));
    return name + suffix;
}
