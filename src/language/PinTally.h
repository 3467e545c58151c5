// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/PinFailures.h"

#include <QMap>
#include <QStringList>

#include <optional>
#include <utility>

/// That none did, translated, without a full stop.
QString noPinFailedWords();

/// How often which pin failed in repeated tests of one IC.
class PinTally {
public:
    /// Counts one more run, in which \a failures were found.
    void add(const QList<PinFailure> &failures);

    int runs() const { return runs_; }
    /// Every field of the table that failed in any run, each once, vector after vector.
    QList<PinFailure> failures() const;
    /// In how many runs a pin failed, by its number; without those that never did. With \a vector,
    /// what failed in that vector alone.
    QMap<int, int> failedRuns(std::optional<int> vector = std::nullopt) const;
    /// A translated sentence without a full stop for each of failedRuns(), in ascending order:
    /// "Pin 3 failed in 2 of 10 runs: ..."; it tells a pin that fails now and then from one that
    /// always does.
    QStringList sentences(std::optional<int> vector = std::nullopt) const;
    /// The same for all vectors as one text; beyond three pins that failed, the others are only
    /// counted. Empty before the first run.
    QString summary() const;

private:
    struct Field {
        int runs = 0;
        QChar expected;
    };

    int runs_ = 0;
    QMap<int, int> pins_;
    QMap<std::pair<int, int>, Field> fields_; ///< by vector and pin
};
