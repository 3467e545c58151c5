#include "widgets/TerminalText.h"

#include <algorithm>

namespace {

constexpr char16_t bell = 0x07;
constexpr char16_t backspace = 0x08;
constexpr char16_t tab = 0x09;
constexpr char16_t lineFeed = 0x0a;
constexpr char16_t carriageReturn = 0x0d;
constexpr char16_t cancel = 0x18;
constexpr char16_t substitute = 0x1a;
constexpr char16_t escape = 0x1b;

/// More parameters than any real sequence has: what goes on longer is not one.
constexpr qsizetype longestParameters = 64;

bool isC0(char16_t unit) {
    return unit < 0x20;
}

bool isControl(char16_t unit) {
    return isC0(unit) || (unit >= 0x7f && unit <= 0x9f);
}

// Text documents take these for the borders of paragraphs and frames, not for characters.
bool isDocumentBorder(char16_t unit) {
    return unit == 0x2028 || unit == 0x2029 || unit == 0xfdd0 || unit == 0xfdd1;
}

bool isPlain(char16_t unit) {
    return !isControl(unit) && !isDocumentBorder(unit);
}

qsizetype plainLength(QStringView text) {
    const auto end = std::find_if_not(text.utf16(), text.utf16() + text.size(), isPlain);
    return end - text.utf16();
}

bool isIntermediate(char16_t unit) {
    return unit >= 0x20 && unit <= 0x2f;
}

bool isParameter(char16_t unit) {
    return unit >= 0x20 && unit <= 0x3f;
}

bool isFinal(char16_t unit) {
    return unit >= 0x40 && unit <= 0x7e;
}

bool startsControlString(char16_t unit) {
    return QStringView(u"]PX^_").contains(QChar(unit));
}

/// The number of an erase sequence; nothing if it is no plain one.
std::optional<int> eraseMode(const QString &parameters) {
    if (parameters.isEmpty())
        return 0;
    bool ok = false;
    const int mode = parameters.toInt(&ok);
    return ok ? std::optional<int>(mode) : std::nullopt;
}

} // namespace

void TerminalText::feed(QStringView piece) {
    for (qsizetype at = 0; at < piece.size();)
        at += consume(piece.sliced(at));
}

qsizetype TerminalText::consume(QStringView rest) {
    const char16_t unit = rest.front().unicode();
    switch (state_) {
    case State::Text:
        if (const qsizetype length = plainLength(rest)) {
            write(rest.first(length));
            return length;
        }
        control(unit);
        break;
    case State::Escape:
    case State::EscapeIntermediate:
        afterEscape(unit);
        break;
    case State::Sequence:
        inSequence(unit);
        break;
    case State::String:
    case State::StringEscape:
        inString(unit);
        break;
    }
    return 1;
}

void TerminalText::control(char16_t unit) {
    switch (unit) {
    case lineFeed:
        finishLine();
        break;
    case carriageReturn:
        cursor_ = floor_;
        break;
    case backspace:
        cursor_ = std::max(floor_, cursor_ - 1);
        break;
    case tab:
        write(u"\t");
        break;
    case cancel:
    case substitute:
        state_ = State::Text;
        break;
    case escape:
        state_ = State::Escape;
        break;
    default:
        if (isDocumentBorder(unit))
            write(u"\ufffd");
    }
}

void TerminalText::afterEscape(char16_t unit) {
    if (isC0(unit)) {
        control(unit);
        return;
    }
    const bool first = state_ == State::Escape;
    state_ = State::Text;
    held_.clear();
    if (isIntermediate(unit))
        state_ = State::EscapeIntermediate;
    else if (first && unit == u'[')
        state_ = State::Sequence;
    else if (first && startsControlString(unit))
        state_ = State::String;
    else if (isPlain(unit) && unit > 0x7f)
        write(QStringView(&unit, 1));
}

void TerminalText::inSequence(char16_t unit) {
    if (isC0(unit)) {
        control(unit);
    } else if (isParameter(unit) && held_.size() < longestParameters) {
        held_.append(QChar(unit));
    } else {
        state_ = State::Text;
        if (isFinal(unit))
            endSequence(unit);
        else if (isPlain(unit))
            write(QStringView(&unit, 1));
    }
}

void TerminalText::endSequence(char16_t final) {
    const std::optional<int> mode = eraseMode(held_);
    if (final == u'K' && mode)
        eraseInLine(*mode);
    else if (final == u'J' && mode)
        eraseInDisplay(*mode);
}

void TerminalText::inString(char16_t unit) {
    const bool afterEscapeUnit = state_ == State::StringEscape;
    state_ = State::String;
    if (unit == bell || unit == cancel || unit == substitute || (afterEscapeUnit && unit == u'\\'))
        state_ = State::Text;
    else if (afterEscapeUnit)
        restartAfterEscape(unit);
    else if (unit == escape)
        state_ = State::StringEscape;
    else if (held_.size() < longestControlString)
        held_.append(QChar(unit));
    else
        giveUpString(unit);
}

// An escape inside of a control string that does not end it begins another sequence.
void TerminalText::restartAfterEscape(char16_t unit) {
    state_ = State::Escape;
    afterEscape(unit);
}

void TerminalText::giveUpString(char16_t unit) {
    state_ = State::Text;
    held_.clear();
    feed(QStringView(&unit, 1));
}

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

TerminalUpdate TerminalText::takeUpdate(qsizetype most) {
    TerminalUpdate update{linesBack_, dirtyFrom_, {}};
    linesBack_ = 0;
    dirtyFrom_ = 0;
    if (pendingLength() > most) {
        update.text = takeLines(most);
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

QString TerminalText::takeLines(qsizetype most) {
    qsizetype end = finished_.lastIndexOf(QChar(lineFeed), taken_ + most - 1) + 1;
    if (end <= taken_)
        end = finished_.indexOf(QChar(lineFeed), taken_) + 1;
    const QString lines = finished_.sliced(taken_, end - taken_);
    noteLinesTaken(end);
    return lines;
}

void TerminalText::noteLinesTaken(qsizetype end) {
    const QStringView lines = QStringView(finished_).first(end);
    finishedLines_ -= lines.sliced(taken_).count(QChar(lineFeed));
    if (!regionOffset_)
        regionLinesShown_ += lines.sliced(taken_).count(QChar(lineFeed));
    else if (*regionOffset_ <= end) {
        regionLinesShown_ = lines.sliced(*regionOffset_).count(QChar(lineFeed));
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
qsizetype TerminalText::endOfDrop(qsizetype most, qsizetype mostLines) const {
    qsizetype end = taken_;
    if (pendingLength() > most) {
        const qsizetype cut = finished_.indexOf(QChar(lineFeed), finished_.size() - most);
        end = cut < 0 ? finished_.size() : cut + 1;
    }
    qsizetype endOfLines = taken_;
    for (qsizetype line = finishedLines_ - mostLines; line > 0; --line)
        endOfLines = finished_.indexOf(QChar(lineFeed), endOfLines) + 1;
    return std::max(end, endOfLines);
}

bool TerminalText::dropPendingBeyond(qsizetype most, qsizetype mostLines) {
    if (pendingLength() <= most && finishedLines_ <= mostLines)
        return false;
    const qsizetype end = endOfDrop(most, mostLines);
    finishedLines_ -= QStringView(finished_).sliced(taken_, end - taken_).count(QChar(lineFeed));
    const bool regionIsLost = !regionOffset_ || *regionOffset_ < end;
    taken_ = end;
    if (regionIsLost) {
        regionStart_.clear();
        regionLinesShown_ = 0;
        regionOffset_ = end;
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
        if (cursor_ >= widestLine)
            finishLine();
        qsizetype length = std::min(plain.size(), widestLine - cursor_);
        if (length < plain.size() && length > 1 && plain[length - 1].isHighSurrogate())
            --length;
        overwrite(plain.first(length));
        plain = plain.sliced(length);
    }
}

void TerminalText::overwrite(QStringView plain) {
    touch(std::min(cursor_, line_.size()));
    if (cursor_ > line_.size())
        line_.resize(cursor_, QLatin1Char(' '));
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
    line_[half] = QLatin1Char(' ');
    touch(half);
}

void TerminalText::touch(qsizetype column) {
    dirty_ = true;
    if (finished_.isEmpty())
        dirtyFrom_ = std::min(dirtyFrom_, column);
}

void TerminalText::finishLine() {
    finished_ += finished_.isEmpty() ? QStringView(line_).sliced(dirtyFrom_) : QStringView(line_);
    finished_ += QChar(lineFeed);
    ++finishedLines_;
    line_.resize(0);
    cursor_ = 0;
    floor_ = 0;
    dirty_ = true;
    anythingShown_ = true;
    runIsEmpty_ = false;
}

void TerminalText::beginRegion() {
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
            line_[at] = QLatin1Char(' ');
        blankHalfCharacters(end);
    }
}

void TerminalText::truncateLine(qsizetype length) {
    if (length >= line_.size())
        return;
    touch(length);
    if (length > floor_ && line_[length - 1].isHighSurrogate()) {
        line_[length - 1] = QLatin1Char(' ');
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
        finishedLines_ -= QStringView(finished_).sliced(*regionOffset_).count(QChar(lineFeed));
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
    line_.prepend(regionStart_);
    cursor_ += regionStart_.size();
    floor_ = regionStart_.size();
    touch(floor_);
}
