// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/ToolReport.h"
#include "language/ToolSteps.h"

#include <QString>
#include <QStringView>

#include <array>

/// Which of its two streams the tool said something on.
enum class ToolStream { Output, Error };

/// Judges what a run prints while it arrives, piece by piece, and keeps what it means in bounded
/// memory, however much there is. Each stream has lines of its own; they end at a carriage return
/// or a line feed, and escape sequences are left out. Where the pieces are cut changes nothing.
class ToolReportReader {
public:
    /// The next \a piece that was said on \a stream.
    void take(QStringView piece, ToolStream stream = ToolStream::Error);

    /// What was said so far; a line that has not ended yet counts as it stands.
    ToolReport report() const;
    /// How far it has come, for a run of the operation that was set; the same counts.
    RunProgress progress() const;
    /// What the run does, a Read otherwise. To be told before it says anything.
    void setOperation(Operation operation) { steps_.setOperation(operation); }

private:
    /// The line that a stream is in.
    class Line {
    public:
        void append(QChar character);
        /// Takes as much of the beginning of \a piece as is plain; gives how much that was.
        qsizetype appendPlain(QStringView piece);
        QStringView text() const { return QStringView(text_).trimmed(); }
        void clear();

    private:
        void appendLow(QChar low, QChar high);

        QString text_;
        QChar high_; ///< the first unit of a character of two, until the second comes
        bool inSequence_ = false;
    };

    /// What the lines until now mean, and what that makes of the next one.
    class Meaning {
    public:
        void take(QStringView line);
        const ToolReport &report() const { return report_; }

    private:
        void takeStep(QStringView line);
        bool takeRemark(QStringView line);
        void takeGuess();
        void takeWords(QStringView line, bool reasonFollows);
        void takeUsage();
        void takeRecordsFound(QStringView line);

        ToolReport report_;
        /// The next line says why a file could not be opened.
        bool reasonFollows_ = false;
        /// The last line that counts is one that nobody knows.
        bool unknownLast_ = false;
    };

    std::array<Line, 2> lines_;
    Meaning meaning_;
    ToolSteps steps_;
};
