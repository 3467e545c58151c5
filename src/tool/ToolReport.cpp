#include "tool/ToolReport.h"

#include <QRegularExpression>

#include <array>

namespace {

using namespace toolErrors;

/// The tool's lines are far shorter; the rest of a longer one is noise.
constexpr qsizetype longestLine = 4096;
constexpr QChar escape(0x1B);

/// \a line without ESC [ ... letter, blanks at the ends and the bell.
QString plainText(QStringView line) {
    QString plain;
    bool inSequence = false;
    for (const QChar character : line) {
        if (character == escape)
            inSequence = true;
        else if (inSequence)
            inSequence = !character.isLetter();
        else if (character.isPrint())
            plain += character;
    }
    return plain.trimmed();
}

bool isProgress(const QString &line) {
    return line.endsWith(QLatin1Char('%')) &&
           (line.startsWith(QLatin1String("Reading")) || line.startsWith(QLatin1String("Writing")));
}

bool isVector(const QString &line) {
    static const QRegularExpression vector(QStringLiteral("^\\d{4}: "));
    return vector.match(line).hasMatch();
}

/// A sentence of failure: its pattern and what its captures mean. The marker is a fixed part of
/// the sentence, so that the pattern need not be tried on every line.
struct Sentence {
    QLatin1String marker;
    QRegularExpression pattern;
    ToolError (*meaning)(const QRegularExpressionMatch &);
};

ToolError connectionProblem(const QRegularExpressionMatch &match) {
    const QString words = match.captured(1);
    if (words.endsWith(QLatin1String("LIBUSB_ERROR_BUSY")))
        return ProgrammerBusy{};
    if (words.endsWith(QLatin1String("LIBUSB_ERROR_NO_DEVICE")))
        return ProgrammerUnplugged{};
    return ConnectionProblem{words};
}

const std::array<Sentence, 8> &sentences() {
    using Match = QRegularExpressionMatch;
    static const auto pattern = [](const char *text) {
        return QRegularExpression(QLatin1String(text));
    };
    static const std::array<Sentence, 8> all{{
        {QLatin1String("No programmer"), pattern("^No programmer found\\."),
         [](const Match &) -> ToolError { return NoProgrammer{}; }},
        {QLatin1String("IO error:"), pattern("IO error: (.+)$"), connectionProblem},
        {QLatin1String("Overcurrent"), pattern("Overcurrent protection!"),
         [](const Match &) -> ToolError { return Overcurrent{}; }},
        {QLatin1String("not found!"), pattern("^Device (.*) not found!$"),
         [](const Match &m) -> ToolError { return UnknownDevice{m.captured(1)}; }},
        {QLatin1String("Invalid Chip ID"),
         pattern("Invalid Chip ID: expected (0x[0-9A-Fa-f]+), got (0x[0-9A-Fa-f]+)"),
         [](const Match &m) -> ToolError {
             return WrongChipId{m.captured(1), m.captured(2)};
         }},
        {QLatin1String("Incorrect file size"),
         pattern("^Incorrect file size: (\\d+) \\(needed (\\d+)"),
         [](const Match &m) -> ToolError {
             return WrongSize{m.captured(1), m.captured(2)};
         }},
        {QLatin1String("Verification failed"),
         pattern("Verification failed at address (\\w+): File=(\\w+), Device=(\\w+)"),
         [](const Match &m) -> ToolError {
             return Difference{m.captured(1), m.captured(2), m.captured(3)};
         }},
        {QLatin1String("Logic test failed"), pattern("Logic test failed: (\\d+) errors?"),
         [](const Match &m) -> ToolError { return LogicErrors{m.captured(1).toInt()}; }},
    }};
    return all;
}

std::optional<ToolError> errorIn(const QString &line) {
    for (const Sentence &sentence : sentences()) {
        if (!line.contains(sentence.marker))
            continue;
        const QRegularExpressionMatch match = sentence.pattern.match(line);
        if (match.hasMatch())
            return sentence.meaning(match);
    }
    return std::nullopt;
}

bool isDone(const QString &line, QLatin1String action) {
    return line.startsWith(action) && line.contains(QLatin1String("... ")) &&
           line.endsWith(QLatin1String(" OK"));
}

void readLine(const QString &line, ToolReport &report) {
    if (line.isEmpty() || isProgress(line))
        return;
    if (isVector(line)) {
        report.logicTested = true;
        return;
    }
    report.lastLine = line;
    if (!report.error)
        report.error = errorIn(line);
    report.readDone |= isDone(line, QLatin1String("Reading "));
    report.writeDone |= isDone(line, QLatin1String("Writing "));
    report.verified |= line == QLatin1String("Verification OK");
    report.logicPassed |= line == QLatin1String("Logic test successful.");
}

} // namespace

ToolReport readToolReport(QStringView output) {
    ToolReport report;
    qsizetype start = 0;
    for (qsizetype end = 0; end <= output.size(); ++end) {
        if (end < output.size() && output[end] != u'\n' && output[end] != u'\r')
            continue;
        readLine(plainText(output.sliced(start, std::min(end - start, longestLine))), report);
        start = end + 1;
    }
    return report;
}
