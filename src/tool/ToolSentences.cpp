#include "tool/ToolSentences.h"

#include <QRegularExpression>

#include <array>

namespace {

using namespace toolErrors;

/// A sentence of failure: its pattern and what its captures mean. The marker is a fixed part of
/// the sentence, so that the pattern need not be tried on every line.
struct Sentence {
    QStringView marker;
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
        {u"No programmer", pattern("^No programmer found\\."),
         [](const Match &) -> ToolError { return NoProgrammer{}; }},
        {u"IO error:", pattern("IO error: (.+)$"), connectionProblem},
        {u"Overcurrent", pattern("Overcurrent protection!"),
         [](const Match &) -> ToolError { return Overcurrent{}; }},
        {u"not found!", pattern("^Device (.*) not found!$"),
         [](const Match &m) -> ToolError { return UnknownDevice{m.captured(1)}; }},
        {u"Invalid Chip ID",
         pattern("Invalid Chip ID: expected (0x[0-9A-Fa-f]+), got (0x[0-9A-Fa-f]+)"),
         [](const Match &m) -> ToolError {
             return WrongChipId{m.captured(1), m.captured(2)};
         }},
        {u"Incorrect file size", pattern("^Incorrect file size: (\\d+) \\(needed (\\d+)"),
         [](const Match &m) -> ToolError {
             return WrongSize{m.captured(1), m.captured(2)};
         }},
        {u"Verification failed",
         pattern("Verification failed at address (\\w+): File=(\\w+), Device=(\\w+)"),
         [](const Match &m) -> ToolError {
             return Difference{m.captured(1), m.captured(2), m.captured(3)};
         }},
        {u"Logic test failed", pattern("Logic test failed: (\\d+) errors?"),
         [](const Match &m) -> ToolError { return LogicErrors{m.captured(1).toInt()}; }},
    }};
    return all;
}

} // namespace

std::optional<ToolError> toolErrorIn(QStringView line) {
    for (const Sentence &sentence : sentences()) {
        if (!line.contains(sentence.marker))
            continue;
        const QRegularExpressionMatch match = sentence.pattern.match(line.toString());
        if (match.hasMatch())
            return sentence.meaning(match);
    }
    return std::nullopt;
}
