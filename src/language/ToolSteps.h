// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/CommandLine.h"

#include <QString>
#include <QStringView>

#include <optional>

/// What the programmer tool is doing with the chip.
enum class RunPhase {
    Starting, ///< it has not said yet
    Erasing,
    Reading,
    Writing,
    Verifying,  ///< reads the chip to compare it
    Protecting, ///< turns the chip's write protection off or on
    Testing
};

/// How far a run has come, as far as the tool says.
struct RunProgress {
    RunPhase phase = RunPhase::Starting;
    /// The part of the chip in the tool's words ("Code", "Data"); empty where it names none.
    QString part;
    /// Of the whole run, what is still to come reckoned in: from 0 to 1, never less than before.
    /// Nothing where the tool does not count.
    std::optional<double> done;
};

/// How the lines of the steps begin that read or write a part of the chip; its name follows.
inline constexpr QStringView readingVerb = u"Reading ";
inline constexpr QStringView writingVerb = u"Writing ";

/// Follows the steps that the tool reports of one run, in both of its dialects: "Reading Code...",
/// then percentages, then how long it took and "OK".
class ToolSteps {
public:
    /// To be told before the first line.
    void setOperation(Operation operation) { operation_ = operation; }
    /// The next line of the tool, without escape sequences and blanks at its ends. True if it
    /// speaks of a step.
    bool take(QStringView line);
    /// The same of a line that more may follow in.
    bool takeUnended(QStringView line);
    RunProgress progress() const;

private:
    bool goesOn(QStringView line) const;
    void begin();
    RunPhase phaseOf(QStringView step) const;

    Operation operation_ = ReadOperation;
    /// The newest step as the tool spells it, with its dots; and what it is called, with single
    /// blanks and without dots.
    QString spelled_;
    QString step_;
    RunPhase phase_ = RunPhase::Starting;
    QString part_;
    /// Where the newest step begins and ends in the whole run, from 0 to 1.
    double from_ = 0;
    double to_ = 0;
    double done_ = 0;
    bool written_ = false;
    bool counts_ = false;
};

/// What stands behind the verb of \a step, which is without its dots.
QString partIn(QStringView step);

/// True if \a line speaks of a step: its beginning, its percentage or its end.
bool isStep(QStringView line);
