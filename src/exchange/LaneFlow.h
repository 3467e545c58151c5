// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "orders/Arrangement.h"

#include <QString>
#include <QStringList>

/// How many bytes are followed.
inline constexpr int shownBytes = 8;

/// Where the first bytes go.
struct LaneFlow {
    /// The bytes of what comes in, a list for each part: bytes are called by numbers from 0.
    QList<QList<int>> from;
    /// Those of what goes out.
    QList<QList<int>> to;
};

/// Where \a arrangement has the first shownBytes bytes go.
LaneFlow flowOf(const Arrangement &arrangement);

/// What byte number \a byte of \a flow is called: where several parts come in, by a letter for the
/// part and its number in that.
QString byteName(const LaneFlow &flow, int byte);

/// What the picture of \a arrangement shows, in words; the parts that come in or go out are called
/// \a names.
QString flowWords(const Arrangement &arrangement, const QStringList &names);
