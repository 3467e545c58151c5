// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringView>

#include <limits>
#include <optional>

/// A change of what is shown: the lines from the place named here on are replaced by a text.
struct TerminalUpdate {
    /// As linesBack: the replacement starts at the very first line of the view.
    static constexpr qsizetype everyLine = std::numeric_limits<qsizetype>::max();

    /// How many lines above the last one the replacement starts (more than there are: at the
    /// first line).
    qsizetype linesBack = 0;
    /// How many UTF-16 units of that line stay; what follows them is replaced.
    qsizetype column = 0;
    /// What takes its place; lines are separated by line feeds.
    QString text;

    bool operator==(const TerminalUpdate &) const = default;
};

/// Turns what a program writes to a terminal into the lines that the terminal would show. A line
/// that returns to its start is overwritten, erase sequences are obeyed, colours and all other
/// control sequences are swallowed. Sequences may be split anywhere between two pieces.
///
/// Columns are UTF-16 units. A line of more than longestLine units goes on in the next one, so
/// that no update is ever larger than its input plus one such line. Nothing that stood before the
/// last beginRun() or endRun() is ever overwritten or erased.
class TerminalText {
public:
    /// The longest line, in UTF-16 units.
    static constexpr qsizetype longestLine = qsizetype(4) * 1024;
    /// A control string (window title and the like) is given up after this many units.
    static constexpr qsizetype longestControlString = 4096;

    /// Takes the next piece of output.
    void feed(QStringView piece);
    /// A run begins: it starts on a line of its own, set off by an empty line from what is there.
    void beginRun();
    /// The run has ended: an unfinished sequence ends with it.
    void endRun();
    /// Forgets everything.
    void clear();

    /// The number of the last line, counted from 0 since everything was last forgotten, with those
    /// that the view does not have yet or has no longer.
    qsizetype lineNumber() const { return lineNumber_; }

    /// True if takeUpdate() has something to give.
    bool hasUpdate() const { return dirty_; }
    /// How many units of finished lines wait to be taken.
    qsizetype pendingLength() const { return finished_.size() - taken_; }
    /// What changed since the last call: all of it, or, when more than \a maxLength units of
    /// finished lines wait, about that many of them.
    TerminalUpdate takeUpdate(qsizetype maxLength = std::numeric_limits<qsizetype>::max());
    /// Gives up waiting lines, oldest first, until at most \a maxLength units in at most
    /// \a maxLines lines wait. The next update then replaces every line of the view. True if lines
    /// were given up.
    bool dropPendingBeyond(qsizetype maxLength, qsizetype maxLines);

private:
    static constexpr char16_t lineFeed = u'\n';

    enum class State { Text, Escape, EscapeIntermediate, Sequence, String, StringEscape };

    qsizetype consume(QStringView rest);
    void control(char16_t unit);
    void afterEscape(char16_t unit);
    void inSequence(char16_t unit);
    void endSequence(char16_t final);
    void inString(char16_t unit);
    void restartAfterEscape(char16_t unit);
    void giveUpString(char16_t unit);

    void write(QStringView plain);
    void overwrite(QStringView plain);
    void blankHalfCharacters(qsizetype index);
    void touch(qsizetype column);
    void finishLine();

    void beginRegion();
    bool regionHasEarlierLines() const;
    void eraseInLine(int mode);
    void truncateLine(qsizetype length);
    void eraseInDisplay(int mode);
    void eraseRegionLines();

    QString takeLines(qsizetype maxLength);
    void noteLinesTaken(qsizetype end);
    qsizetype endOfDrop(qsizetype maxLength, qsizetype maxLines) const;
    void compact();

    State state_ = State::Text;
    QString held_; ///< what the unfinished sequence holds so far

    QString line_;         ///< the last line, whole
    qsizetype cursor_ = 0; ///< where the next unit goes; may stand behind the end of the line
    qsizetype floor_ = 0;  ///< units of the line that may not be overwritten
    bool anythingShown_ = false;
    bool runIsEmpty_ = false;

    qsizetype lineNumber_ = 0;

    /// What may be erased starts behind regionStart_, the protected start of some earlier line.
    QString regionStart_;
    qsizetype regionLine_ = 0;              ///< the number of its line
    qsizetype regionLinesShown_ = 0;        ///< line feeds between there and the end of the view
    std::optional<qsizetype> regionOffset_; ///< where its line starts in finished_, if not in view

    qsizetype linesBack_ = 0;
    qsizetype dirtyFrom_ = 0; ///< first column of the view's last line that changed
    bool dirty_ = false;
    QString finished_; ///< lines that the view has not got, from dirtyFrom_ of the first on
    qsizetype taken_ = 0;
    qsizetype finishedLines_ = 0; ///< lines of finished_ that have not been taken
};
