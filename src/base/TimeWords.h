// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDateTime>
#include <QLocale>

/// \a when as people say it on the day \a today: the time alone for that day, else the date with
/// it.
inline QString timeWords(const QDateTime &when, const QDate &today) {
    return when.date() == today ? QLocale().toString(when.time(), QStringLiteral("HH:mm"))
                                : QLocale().toString(when, QLocale::ShortFormat);
}

/// \a when in full, with its date, its zone and its seconds, as the user's language has it.
inline QString momentWords(const QDateTime &when) {
    return QLocale().toString(when, QLocale::LongFormat);
}
