// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Log.h"

#include <QStringList>

/// A log that keeps its events for a test to look at.
class RecordingLog final : public Log {
public:
    void write(const QString &text) override { lines.append(text); }

    /// How many events are exactly \a text.
    qsizetype count(const QString &text) const { return lines.count(text); }
    /// The events that begin with \a start.
    QStringList startingWith(const QString &start) const {
        QStringList found;
        for (const QString &line : lines)
            if (line.startsWith(start))
                found.append(line);
        return found;
    }
    /// The events, taken out: the next call sees only what came since.
    QStringList take() { return std::exchange(lines, {}); }

    QStringList lines;
};
