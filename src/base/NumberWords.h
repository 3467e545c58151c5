// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"

#include <QCoreApplication>
#include <QLocale>
#include <QString>

/// \a number with its digits in groups, as the user's language has it.
inline QString grouped(qint64 number) {
    return QLocale().toString(number);
}

/// "3 GiB": a bound of \a bytes, which are whole GiB.
inline QString boundWords(qint64 bytes) {
    return QCoreApplication::translate("NumberWords", "%1 GiB").arg(grouped(bytes / gibibyte));
}
