// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/ToolSentences.h"

#include <QRegularExpression>

#include <array>

namespace {

using namespace toolErrors;
using Match = QRegularExpressionMatch;

/// A sentence of failure: its pattern and what its captures mean. It begins with the fixed text
/// start, so that the pattern need not be tried on every line.
struct Sentence {
    QStringView start;
    QRegularExpression pattern;
    ToolError (*meaning)(const Match &);
};

template <typename Error>
ToolError plainly(const Match &) {
    return Error{};
}

ToolError connectionProblem(const Match &match) {
    const QString words = match.captured(1);
    if (words.endsWith(u"LIBUSB_ERROR_BUSY"))
        return ProgrammerBusy{};
    if (words.endsWith(u"LIBUSB_ERROR_NO_DEVICE"))
        return ProgrammerUnplugged{};
    return ConnectionProblem{words};
}

ToolError wrongSize(const Match &match) {
    return WrongSize{match.captured(1).toLongLong(), match.captured(2).toLongLong()};
}

ToolError unopenedFile(const Match &match) {
    return UnopenedFile{match.captured(1), match.captured(2) == u"writing", {}};
}

/// The ID of the device chosen and the chip's own, however the tool takes the difference.
constexpr const char *bothIds = "expected (0x[0-9A-Fa-f]+), got (0x[0-9A-Fa-f]+)";

QRegularExpression pattern(const char *text) {
    return QRegularExpression(QLatin1String(text));
}

const auto &sentences() {
    static const std::array all{
        Sentence{u"No programmer found.", pattern("^"), plainly<NoProgrammer>},
        Sentence{u"IO error: ", pattern(": (.+)$"), connectionProblem},
        Sentence{u"Found ", pattern("in bootloader mode"), plainly<BootloaderMode>},
        Sentence{u"Overcurrent protection!", pattern("^"), plainly<Overcurrent>},
        Sentence{
            u"Device ", pattern("^Device (.*) not found!$"),
            [](const Match &m) -> ToolError { return UnknownDevice{m.captured(1).trimmed()}; }},
        Sentence{u"Unsupported device!", pattern("^"), plainly<UnsupportedDevice>},
        Sentence{u"Invalid Chip ID: ", pattern(bothIds),
                 [](const Match &m) -> ToolError {
                     return WrongChipId{m.captured(1), m.captured(2)};
                 }},
        Sentence{u"Incorrect file size: ", pattern(": (\\d+) \\(needed (\\d+)"), wrongSize},
        Sentence{u"Verification failed at address ",
                 pattern("(0x[0-9A-Fa-f]+): File=(\\w+), Device=(\\w+)"),
                 [](const Match &m) -> ToolError {
                     return Difference{m.captured(1), m.captured(2), m.captured(3)};
                 }},
        Sentence{u"Logic test failed: ", pattern("(\\d+) errors?"),
                 [](const Match &m) -> ToolError { return LogicErrors{m.captured(1).toInt()}; }},
        Sentence{u"Error running the first step of logic test.", pattern("^"),
                 plainly<LogicTestNotRun>},
        Sentence{u"No data to read.", pattern("^"), plainly<NoData>},
        Sentence{u"Could not open file ", pattern("^.{20}(.*) for (reading|writing)\\.$"),
                 unopenedFile},
        Sentence{u"Error on line ", pattern("(line \\d+: .+?)\\.?$"),
                 [](const Match &m) -> ToolError { return BadRecord{m.captured(1)}; }},
        Sentence{u"Error: no end of file record", pattern("(no end .+?)\\.?$"),
                 [](const Match &m) -> ToolError { return BadRecord{m.captured(1)}; }},
        Sentence{u"No config section found.", pattern("^"), plainly<NoConfiguration>},
        Sentence{u"This chip doesn't have a chip ID!", pattern("^"), plainly<NoChipId>},
    };
    return all;
}

/// The one sentence that begins with a name.
std::optional<ToolError> missingVectors(QStringView line) {
    constexpr QStringView ending = u": test vectors are not defined for this device type.";
    if (!line.endsWith(ending))
        return std::nullopt;
    return NoTestVectors{line.chopped(ending.size()).toString()};
}

} // namespace

std::optional<ToolError> toolErrorIn(QStringView line) {
    for (const Sentence &sentence : sentences()) {
        if (!line.startsWith(sentence.start))
            continue;
        const Match match = sentence.pattern.match(line.toString());
        if (match.hasMatch())
            return sentence.meaning(match);
    }
    return missingVectors(line);
}

std::optional<WrongChipId> ignoredIdIn(QStringView line) {
    static const QRegularExpression ids = pattern(bothIds);
    if (!line.startsWith(u"WARNING: Chip ID mismatch: "))
        return std::nullopt;
    const Match match = ids.match(line.toString());
    return match.hasMatch() ? std::optional(WrongChipId{match.captured(1), match.captured(2)})
                            : std::nullopt;
}

std::optional<WrongSize> ignoredSizeIn(QStringView line) {
    static const QRegularExpression sizes = pattern(": (\\d+) \\(needed (\\d+)\\)");
    if (!line.startsWith(u"Warning: Incorrect file size: "))
        return std::nullopt;
    const Match match = sizes.match(line.toString());
    return match.hasMatch() ? std::optional(WrongSize{match.captured(1).toLongLong(),
                                                      match.captured(2).toLongLong()})
                            : std::nullopt;
}

std::optional<QString> databasePlaceIn(QStringView line) {
    static const QRegularExpression place = pattern("^(?:(.*)/)?(?:logicic|infoic)\\.xml: ");
    if (!line.contains(u"ic.xml: "))
        return std::nullopt;
    const Match match = place.match(line.toString());
    return match.hasMatch() ? std::optional(match.captured(1)) : std::nullopt;
}
