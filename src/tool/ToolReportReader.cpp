#include "tool/ToolReportReader.h"

#include "tool/ToolSentences.h"

#include <algorithm>

namespace {

/// The tool's lines are far shorter; the rest of a longer one is noise.
constexpr qsizetype longestLine = 4096;
constexpr QChar escape(0x1B);

bool isProgress(QStringView line) {
    return line.endsWith(u'%') && (line.startsWith(u"Reading") || line.startsWith(u"Writing"));
}

/// A line of the table of a logic test: the number of a vector and a colon first.
bool isVector(QStringView line) {
    constexpr qsizetype digits = 4;
    return line.size() > digits + 1 && line.sliced(digits).startsWith(u": ") &&
           std::all_of(line.begin(), line.begin() + digits,
                       [](QChar character) { return character >= u'0' && character <= u'9'; });
}

bool isDone(QStringView line, QStringView action) {
    return line.startsWith(action) && line.contains(u"... ") && line.endsWith(u" OK");
}

void readLine(QStringView line, ToolReport &report) {
    if (line.isEmpty() || isProgress(line))
        return;
    if (isVector(line)) {
        report.logicTested = true;
        return;
    }
    report.lastLine = line.toString();
    if (!report.error)
        report.error = toolErrorIn(line);
    report.readDone |= isDone(line, u"Reading ");
    report.writeDone |= isDone(line, u"Writing ");
    report.verified |= line == u"Verification OK";
    report.logicPassed |= line == u"Logic test successful.";
}

} // namespace

void ToolReportReader::Line::append(QChar character) {
    if (character == escape)
        inSequence_ = true;
    else if (inSequence_)
        inSequence_ = !character.isLetter();
    else if (text_.size() < longestLine && character.isPrint())
        text_ += character;
}

void ToolReportReader::Line::clear() {
    text_.truncate(0);
    inSequence_ = false;
}

void ToolReportReader::take(QStringView piece, ToolStream stream) {
    Line &line = lines_[static_cast<size_t>(stream)];
    for (const QChar character : piece) {
        if (character != u'\n' && character != u'\r') {
            line.append(character);
            continue;
        }
        readLine(line.text(), report_);
        line.clear();
    }
}

ToolReport ToolReportReader::report() const {
    ToolReport report = report_;
    for (const Line &line : lines_)
        readLine(line.text(), report);
    return report;
}
