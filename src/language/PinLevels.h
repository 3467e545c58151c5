// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QChar>
#include <QList>
#include <QStringList>

struct LogicReport;

/// What came of a pin.
enum class PinState {
    /// No output was expected of it.
    Unchecked,
    Good,
    Failed,
};

/// A pin of the chip that was tested.
struct TestedPin {
    /// As the header of its column gives it.
    int number = 0;
    /// What was driven or expected; null where the vectors asked for differ, or do not say.
    QChar letter;
    PinState state = PinState::Unchecked;
};

/// The number of the pin in column \a column of \a report, counted from 0: that of the header, or
/// its place from 1 on if the header is no number.
int pinNumber(const LogicReport &report, qsizetype column);
/// The number of the vector in line \a row of \a report: the one that the line begins with, else
/// its place from 0 on.
int vectorNumber(const LogicReport &report, qsizetype row);

/// The pins of \a report in the order of its header, as they are in its line \a row.
QList<TestedPin> pinsInVector(const LogicReport &report, qsizetype row);
/// The same, each pin with the worst that came of it in any vector.
QList<TestedPin> worstOfPins(const LogicReport &report);

/// The fewest pins of a package with two rows of them.
inline constexpr qsizetype minPins = 8;
/// The most pins of one: the tool tests no chip of more.
inline constexpr qsizetype maxPins = 40;

/// True if \a report tells of at least one vector of a package with two equal rows of pins.
bool tellsOfPackage(const LogicReport &report);

/// A line for each letter with its meaning, translated.
QStringList levelLegend();

/// The header and the vectors of \a report in columns, without colours; a minus sign marks what
/// failed.
QString plainTable(const LogicReport &report);
