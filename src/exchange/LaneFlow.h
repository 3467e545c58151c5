// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "orders/Arrangement.h"

#include <QString>
#include <QStringList>

/// How many bytes are followed.
inline constexpr int shownBytes = 8;

/// Where the first of them go.
struct LaneFlow {
    /// The bytes of what comes in, a list for each part: bytes are called by numbers from 0.
    QList<QList<int>> from;
    /// Those of what goes out.
    QList<QList<int>> to;
};

/// What \a arrangement does with them.
LaneFlow flowOf(const Arrangement &arrangement);

/// What byte number \a byte of \a flow is called: where several parts come in, by a letter for the
/// part and its number in that.
QString byteName(const LaneFlow &flow, int byte);

/// The same as the picture of it shows, in words; the parts that come in or go out are called
/// \a names.
QString flowWords(const Arrangement &arrangement, const QStringList &names);
