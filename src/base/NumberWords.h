// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLocale>
#include <QString>

/// \a number with its digits in groups, as the user's language has it.
inline QString grouped(qint64 number) {
    return QLocale().toString(number);
}
