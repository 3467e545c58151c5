// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QChar>
#include <QString>

/// One field of a logic test's report, as `minipro` prints it: the letter of a level between the
/// sequences that colour a terminal; bright red for a pin that differed, with a minus sign behind
/// the expected level.

/// A field as a cell shows it.
struct ShownField {
    QString text;
    /// It was red.
    bool failed = false;
};

/// \a field without its colours. One that holds several is what stands behind the first end of
/// colour.
ShownField shownField(const QString &field);

/// What one field says.
struct PinLevel {
    /// One of "01LHCZXGV"; null for any other text.
    QChar letter;
    /// The pin was at another level.
    bool failed = false;
};

/// What \a field, with the tool's colours and signs, says.
PinLevel pinLevel(const QString &field);
