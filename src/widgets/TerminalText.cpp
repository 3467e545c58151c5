// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/TerminalText.h"

#include <algorithm>
#include <utility>

void TerminalText::beginRun() {
    state_ = State::Text;
    if (anythingShown_ && !runIsEmpty_) {
        if (!line_.isEmpty())
            finishLine();
        finishLine();
    }
    runIsEmpty_ = true;
    beginRegion();
}

void TerminalText::endRun() {
    const bool inControlString = state_ == State::String || state_ == State::StringEscape;
    state_ = State::Text;
    // A control string that never ended has swallowed the last words of the run as well.
    if (inControlString)
        feed(std::exchange(held_, QString()));
    state_ = State::Text;
    beginRegion();
}

void TerminalText::clear() {
    *this = TerminalText();
    dirty_ = true;
    linesBack_ = TerminalUpdate::everyLine;
}

TerminalUpdate TerminalText::takeUpdate(qsizetype maxLength) {
    TerminalUpdate update{linesBack_, dirtyFrom_, {}};
    linesBack_ = 0;
    dirtyFrom_ = 0;
    if (pendingLength() > maxLength) {
        update.text = takeLines(maxLength);
        return update;
    }
    const bool onSameLine = finished_.isEmpty();
    if (!onSameLine)
        update.text = takeLines(pendingLength());
    update.text += onSameLine ? QStringView(line_).sliced(update.column) : QStringView(line_);
    dirtyFrom_ = line_.size();
    dirty_ = false;
    return update;
}

QString TerminalText::takeLines(qsizetype maxLength) {
    qsizetype end = finished_.lastIndexOf(lineFeed, taken_ + maxLength - 1) + 1;
    if (end <= taken_)
        end = finished_.indexOf(lineFeed, taken_) + 1;
    const QString lines = finished_.sliced(taken_, end - taken_);
    noteLinesTaken(end);
    return lines;
}

void TerminalText::noteLinesTaken(qsizetype end) {
    const QStringView lines = QStringView(finished_).first(end);
    finishedLines_ -= lines.sliced(taken_).count(lineFeed);
    if (!regionOffset_)
        regionLinesShown_ += lines.sliced(taken_).count(lineFeed);
    else if (*regionOffset_ <= end) {
        regionLinesShown_ = lines.sliced(*regionOffset_).count(lineFeed);
        regionOffset_.reset();
    }
    taken_ = end;
    compact();
}

// The part that has been taken is cut off when it is the larger one, so that each unit is moved
// once at most.
void TerminalText::compact() {
    if (taken_ <= pendingLength())
        return;
    finished_.remove(0, taken_);
    if (regionOffset_)
        *regionOffset_ -= taken_;
    taken_ = 0;
}

// Up to where lines have to go, at a line's end; what has been taken already if none has to.
qsizetype TerminalText::endOfDrop(qsizetype maxLength, qsizetype maxLines) const {
    qsizetype end = taken_;
    if (pendingLength() > maxLength) {
        const qsizetype cut = finished_.indexOf(lineFeed, finished_.size() - maxLength);
        end = cut < 0 ? finished_.size() : cut + 1;
    }
    qsizetype endOfLines = taken_;
    for (qsizetype line = finishedLines_ - maxLines; line > 0; --line)
        endOfLines = finished_.indexOf(lineFeed, endOfLines) + 1;
    return std::max(end, endOfLines);
}

bool TerminalText::dropPendingBeyond(qsizetype maxLength, qsizetype maxLines) {
    if (pendingLength() <= maxLength && finishedLines_ <= maxLines)
        return false;
    const qsizetype end = endOfDrop(maxLength, maxLines);
    finishedLines_ -= QStringView(finished_).sliced(taken_, end - taken_).count(lineFeed);
    const bool regionIsLost = !regionOffset_ || *regionOffset_ < end;
    taken_ = end;
    if (regionIsLost) {
        regionStart_.clear();
        regionLinesShown_ = 0;
        regionOffset_ = end;
        regionLine_ = lineNumber_ - finishedLines_;
    }
    if (regionOffset_ == end && end == finished_.size())
        regionOffset_.reset();
    compact();
    linesBack_ = TerminalUpdate::everyLine;
    dirtyFrom_ = 0;
    return true;
}

void TerminalText::write(QStringView plain) {
    anythingShown_ = true;
    runIsEmpty_ = false;
    while (!plain.isEmpty()) {
        if (cursor_ >= longestLine)
            finishLine();
        qsizetype length = std::min(plain.size(), longestLine - cursor_);
        if (length < plain.size() && length > 1 && plain[length - 1].isHighSurrogate())
            --length;
        overwrite(plain.first(length));
        plain = plain.sliced(length);
    }
}

void TerminalText::overwrite(QStringView plain) {
    touch(std::min(cursor_, line_.size()));
    if (cursor_ > line_.size())
        line_.resize(cursor_, u' ');
    const qsizetype covered = std::min(plain.size(), line_.size() - cursor_);
    if (covered > 0) {
        std::copy_n(plain.begin(), covered, line_.begin() + cursor_);
        line_.append(plain.sliced(covered));
    } else {
        line_.append(plain);
    }
    blankHalfCharacters(cursor_);
    cursor_ += plain.size();
    blankHalfCharacters(cursor_);
}

// Overwriting may leave one half of a character of two units; the border is in front of index.
void TerminalText::blankHalfCharacters(qsizetype index) {
    const bool leftIsHigh = index > 0 && line_[index - 1].isHighSurrogate();
    const bool rightIsLow = index < line_.size() && line_[index].isLowSurrogate();
    if (leftIsHigh == rightIsLow || index >= line_.size())
        return;
    const qsizetype half = rightIsLow ? index : index - 1;
    line_[half] = u' ';
    touch(half);
}

void TerminalText::touch(qsizetype column) {
    dirty_ = true;
    if (finished_.isEmpty())
        dirtyFrom_ = std::min(dirtyFrom_, column);
}

void TerminalText::finishLine() {
    ++lineNumber_;
    finished_ += finished_.isEmpty() ? QStringView(line_).sliced(dirtyFrom_) : QStringView(line_);
    finished_ += lineFeed;
    ++finishedLines_;
    line_.resize(0);
    cursor_ = 0;
    floor_ = 0;
    dirty_ = true;
    anythingShown_ = true;
    runIsEmpty_ = false;
}

void TerminalText::beginRegion() {
    regionLine_ = lineNumber_;
    regionStart_ = line_;
    regionLinesShown_ = 0;
    regionOffset_.reset();
    if (!finished_.isEmpty())
        regionOffset_ = finished_.size();
    floor_ = line_.size();
    cursor_ = floor_;
}

bool TerminalText::regionHasEarlierLines() const {
    if (regionOffset_)
        return *regionOffset_ < finished_.size();
    return regionLinesShown_ > 0 || pendingLength() > 0;
}

void TerminalText::eraseInLine(int mode) {
    constexpr int toEnd = 0;
    constexpr int fromStart = 1;
    constexpr int whole = 2;
    if (mode == toEnd || mode == whole) {
        truncateLine(mode == whole ? floor_ : cursor_);
    } else if (mode == fromStart) {
        const qsizetype end = std::min(cursor_ + 1, line_.size());
        touch(floor_);
        for (qsizetype at = floor_; at < end; ++at)
            line_[at] = u' ';
        blankHalfCharacters(end);
    }
}

void TerminalText::truncateLine(qsizetype length) {
    if (length >= line_.size())
        return;
    touch(length);
    if (length > floor_ && line_[length - 1].isHighSurrogate()) {
        line_[length - 1] = u' ';
        touch(length - 1);
    }
    line_.truncate(length);
}

void TerminalText::eraseInDisplay(int mode) {
    constexpr int below = 0;
    constexpr int above = 1;
    constexpr int everything = 2;
    if (mode == below) {
        eraseInLine(mode);
    } else if (mode == above) {
        eraseRegionLines();
        eraseInLine(mode);
    } else if (mode == everything) {
        eraseRegionLines();
        truncateLine(floor_);
        cursor_ = floor_;
    }
}

// Takes the region's earlier lines away: the last line moves up behind the region's start.
void TerminalText::eraseRegionLines() {
    if (!regionHasEarlierLines())
        return;
    if (regionOffset_) {
        finishedLines_ -= QStringView(finished_).sliced(*regionOffset_).count(lineFeed);
        finished_.truncate(*regionOffset_);
        if (pendingLength() == 0) {
            finished_.clear();
            taken_ = 0;
            regionOffset_.reset();
        }
    } else {
        if (regionLinesShown_ > 0)
            dirtyFrom_ = regionStart_.size();
        linesBack_ += regionLinesShown_;
        finished_.clear();
        finishedLines_ = 0;
        taken_ = 0;
        regionLinesShown_ = 0;
    }
    lineNumber_ = regionLine_;
    line_.prepend(regionStart_);
    cursor_ += regionStart_.size();
    floor_ = regionStart_.size();
    touch(floor_);
}
