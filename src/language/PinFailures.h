// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QStringList>

struct LogicReport;

/// The fields of a line that the grid has room for, its number aside.
inline constexpr qsizetype pinsInGrid = 17;

/// A pin whose level was not the expected one.
struct PinFailure {
    /// The pin's number as the header of its column gives it.
    int pin = 0;
    /// The number of the test vector as its line gives it; the first is 0.
    int vector = 0;
    /// The letter of the level that was expected; null if the report has none.
    QChar expected = {};
};

/// The fields of \a report that are marked bad, line by line. A column whose header is no number
/// counts by its place, and so does a line; what has no header is no pin.
QList<PinFailure> pinFailures(const LogicReport &report);

/// A translated sentence that names the pins of \a failures with their vectors, pins that failed
/// alike together; empty if there are none. At most maxPins are named, and of many vectors the
/// first; the others are counted. \a pins is the number of pins of the chip: where it has
/// more than the grid has columns, a second sentence says so.
QString wordsFor(const QList<PinFailure> &failures, qsizetype pins);

/// A translated sentence for each failed pin, in ascending order: "Pin 3, vector 3: low expected".
/// At most maxPins and one that counts the others; of many vectors the first are named, and the
/// others counted.
QStringList sentencesFor(const QList<PinFailure> &failures);
