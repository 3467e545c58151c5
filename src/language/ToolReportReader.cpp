// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/ToolReportReader.h"

#include "base/Digits.h"
#include "base/VisibleText.h"
#include "language/ToolSentences.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <variant>

namespace {

/// The tool's lines are far shorter; the rest of a longer one is noise.
constexpr qsizetype longestLine = 4096;
/// How many parts of a chip, or folders, are kept by name.
constexpr qsizetype maxNames = 8;
constexpr QChar escape(0x1B);

template <size_t count>
bool startsWithAny(QStringView line, const std::array<QStringView, count> &starts) {
    return std::any_of(starts.begin(), starts.end(),
                       [line](QStringView start) { return line.startsWith(start); });
}

void addOnce(QStringList &names, const QString &name) {
    if (names.size() < maxNames && !names.contains(name))
        names.append(name);
}

/// A line of the table of a logic test: the number of a vector and a colon first.
bool isVector(QStringView line) {
    constexpr qsizetype digits = 4;
    return line.size() > digits + 1 && line.sliced(digits).startsWith(u": ") &&
           std::all_of(line.begin(), line.begin() + digits,
                       [](QChar character) { return digitValue(character, decimal); });
}

/// The lines that every run begins with.
bool isOpening(QStringView line) {
    static constexpr std::array<QStringView, 9> starts{
        u"Found ", u"Device code: ",          u"Serial code: ", u"USB speed: ", u"VPP=",
        u"VPP: ",  u"Use -P if you want to ", u"Chip ID: ",     u"Expected  "};
    return startsWithAny(line, starts);
}

/// What the tool goes on after is no cause of its end.
bool isWarning(QStringView line) {
    return line.startsWith(u"Warning:", Qt::CaseInsensitive);
}

/// The lines around a complaint that add nothing to it.
bool isPadding(QStringView line) {
    static constexpr std::array<QStringView, 3> starts{u"minipro version ", u"See the manual page ",
                                                       u"(use '-y' to continue"};
    return startsWithAny(line, starts);
}

/// What is said behind an unfinished count, which need not end its line.
QStringView behindCount(QStringView line) {
    static constexpr std::array<QStringView, 2> verbs{readingVerb, writingVerb};
    if (!startsWithAny(line, verbs))
        return line;
    const qsizetype percent = line.indexOf(u'%');
    const QStringView rest = line.sliced(percent + 1).trimmed();
    return percent < 0 || rest.isEmpty() ? line : rest;
}

} // namespace

void ToolReportReader::Line::append(QChar character) {
    const QChar high = std::exchange(high_, QChar());
    if (character == escape)
        inSequence_ = true;
    else if (inSequence_)
        inSequence_ = !character.isLetter();
    else if (character.isHighSurrogate())
        high_ = character;
    else if (character.isLowSurrogate())
        appendLow(character, high);
    else if (text_.size() < longestLine && character.isPrint())
        text_ += character;
}

void ToolReportReader::Line::appendLow(QChar low, QChar high) {
    const bool isShown =
        high.isHighSurrogate() && QChar::isPrint(QChar::surrogateToUcs4(high, low));
    if (isShown && text_.size() + 1 < longestLine)
        text_.append(high).append(low);
}

// Printable ASCII outside of a sequence is nearly everything that is ever said.
qsizetype ToolReportReader::Line::appendPlain(QStringView piece) {
    if (inSequence_)
        return 0;
    // Should only the first unit of a character have come, this is not its second.
    if (!piece.isEmpty() && isPrintableAscii(piece.front()))
        high_ = QChar();
    const auto end = std::find_if_not(piece.begin(), piece.end(),
                                      [](QChar unit) { return isPrintableAscii(unit); });
    const QStringView plain(piece.begin(), end);
    text_ += plain.first(std::min(plain.size(), longestLine - text_.size()));
    return plain.size();
}

void ToolReportReader::Line::clear() {
    text_.truncate(0);
    high_ = QChar();
    inSequence_ = false;
}

void ToolReportReader::take(QStringView piece, ToolStream stream) {
    Line &line = lines_[size_t(stream)];
    for (qsizetype at = line.appendPlain(piece); at < piece.size();
         at += line.appendPlain(piece.sliced(at))) {
        const QChar character = piece[at++];
        if (character != u'\n' && character != u'\r') {
            line.append(character);
            continue;
        }
        meaning_.take(line.text());
        steps_.take(line.text());
        line.clear();
    }
}

ToolReport ToolReportReader::report() const {
    Meaning meaning = meaning_;
    for (const Line &line : lines_)
        meaning.take(line.text());
    return meaning.report();
}

RunProgress ToolReportReader::progress() const {
    ToolSteps steps = steps_;
    for (const Line &line : lines_)
        steps.takeUnended(line.text());
    return steps.progress();
}

void ToolReportReader::Meaning::take(QStringView whole) {
    const QStringView line = behindCount(whole);
    if (line.isEmpty() || isPadding(line))
        return;
    const bool reasonFollows = std::exchange(reasonFollows_, false);
    if (isVector(line)) {
        report_.logicTested = true;
    } else if (line.startsWith(u"This chip may be write-protected.")) {
        takeGuess();
    } else if (line.startsWith(u"Usage: ") && line.endsWith(u" [options]")) {
        takeUsage();
    } else if (isStep(line)) {
        takeStep(line);
    } else if (line.startsWith(u"Found Motorola S-Record file")) {
        takeRecordsFound(line);
    } else if (isWarning(line)) {
        takeRemark(line);
    } else if (takeRemark(line)) {
        report_.lastLine = line.toString();
        unknownLast_ = false;
    } else {
        takeWords(line, reasonFollows);
    }
}

// What was said before a step is not what the tool said last.
void ToolReportReader::Meaning::takeStep(QStringView line) {
    report_.lastLine.clear();
    unknownLast_ = false;
    report_.stepBegun = true;
    report_.lastStepDone = line.endsWith(u"OK");
    if (!report_.lastStepDone)
        return;
    const QString part = partIn(line.first(line.indexOf(u"...")));
    if (line.startsWith(readingVerb))
        addOnce(report_.partsRead, part);
    else if (line.startsWith(writingVerb))
        addOnce(report_.partsWritten, part);
}

// Right before it says so the tool prints the title that the file has. That may read like anything,
// and over several lines: nothing counts that the tool cannot truly have said yet. A warning that
// it can have said does: one that is missing would do more harm than one too many.
void ToolReportReader::Meaning::takeRecordsFound(QStringView line) {
    ToolReport report;
    report.adapterMissing = report_.adapterMissing;
    report.ignoredId = report_.ignoredId;
    report_ = report;
    report_.decoded = ImageEncoding::SRecord;
    report_.lastLine = line.toString();
    unknownLast_ = false;
}

bool ToolReportReader::Meaning::takeRemark(QStringView line) {
    if (line == u"Verification OK")
        report_.verified = true;
    else if (line == u"Logic test successful.")
        report_.logicPassed = true;
    else if (line.endsWith(u" adapter not found!"))
        report_.adapterMissing = true;
    else if (line.startsWith(u"No device found. Which database "))
        report_.choiceAsked = true;
    else if (line.startsWith(u"Found Intel hex file"))
        report_.decoded = ImageEncoding::IntelHex;
    else if (const auto id = ignoredIdIn(line))
        report_.ignoredId = id;
    else if (const auto size = ignoredSizeIn(line))
        report_.ignoredSize = size;
    else if (const auto place = databasePlaceIn(line))
        addOnce(report_.missingDatabase, *place);
    else
        return false;
    return true;
}

// The tool says it behind every failed write. What it said right before is the cause, even where
// nobody knows the words.
void ToolReportReader::Meaning::takeGuess() {
    report_.protectionGuessed = true;
    if (!report_.error && unknownLast_)
        report_.error = toolErrors::OtherTrouble{report_.lastLine};
}

void ToolReportReader::Meaning::takeUsage() {
    if (!report_.error)
        report_.error = toolErrors::WrongCommandLine{unknownLast_ ? report_.lastLine : QString()};
}

void ToolReportReader::Meaning::takeWords(QStringView line, bool reasonFollows) {
    std::optional<ToolError> error;
    if (!report_.error)
        error = toolErrorIn(line);
    unknownLast_ = !error && !isOpening(line);
    if (!error && !unknownLast_)
        return;
    report_.lastLine = line.toString();
    if (error) {
        report_.error = error;
        reasonFollows_ = std::holds_alternative<toolErrors::UnopenedFile>(*error);
    } else if (reasonFollows) {
        std::get<toolErrors::UnopenedFile>(*report_.error).reason = report_.lastLine;
    }
}
