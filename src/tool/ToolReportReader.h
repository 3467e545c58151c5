#pragma once

#include "tool/ToolReport.h"

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

private:
    /// The line that a stream is in.
    class Line {
    public:
        void append(QChar character);
        QStringView text() const { return QStringView(text_).trimmed(); }
        void clear();

    private:
        QString text_;
        bool inSequence_ = false;
    };

    std::array<Line, 2> lines_;
    ToolReport report_;
};
