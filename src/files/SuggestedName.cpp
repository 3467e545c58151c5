// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/SuggestedName.h"

#include <QRegularExpression>

namespace {

/// Of the 255 bytes that a file name may have, some are for the ending, and for what tells the
/// files of a set apart.
constexpr qsizetype longestSuggestion = 200;

} // namespace

QString suggestedName(const QString &device, const QString &suffix) {
    static const QRegularExpression unfit(QStringLiteral("[^A-Za-z0-9@._+=-]+"));
    QString name = device.trimmed().replace(unfit, QStringLiteral("_"));
    if (name.isEmpty() || name.startsWith(u'.'))
        name.prepend(QStringLiteral("chip"));
    name.truncate(longestSuggestion);
    return name + suffix;
}
