// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/SuccessWords.h"

#include "base/NumberWords.h"
#include "language/ChipParts.h"
#include "language/CommandLine.h"
#include "language/ImageEncoding.h"
#include "language/KnownMemories.h"
#include "language/NextStep.h"
#include "language/RunRemarks.h"
#include "language/Sentences.h"
#include "language/ToolReport.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>
#include <optional>

namespace {

using toolErrors::WrongSize;
using Verdict = RunOutcome::Verdict;

/// \a parts as one text if the chip's code memory is not among them; else nothing.
QString partsAlone(const QStringList &parts) {
    const bool codeIsMissing = std::none_of(parts.begin(), parts.end(), isCodePart);
    return codeIsMissing ? parts.join(u", ") : QString();
}

/// The user's own switches tell the tool to say nothing of a size that differs.
bool keepsSizesSilent(const RunFacts &facts) {
    static const QRegularExpression silent(QStringLiteral("\\s-[A-Za-z]*S"));
    return facts.tool.contains(silent);
}

/// The words for one run that ended well.
class SuccessWording {
    Q_DECLARE_TR_FUNCTIONS(RunOutcome)

public:
    explicit SuccessWording(const RunFacts &run) : facts_(run), report_(run.report) {}

    RunOutcome outcome() const;

private:
    RunOutcome byOperation() const;
    RunOutcome read() const;
    RunOutcome verify() const;
    RunOutcome write() const;
    RunOutcome decoded(const QString &kind) const;
    RunOutcome longFile(const WrongSize &sizes) const;
    RunOutcome shortFile(const WrongSize &sizes) const;
    RunOutcome unknownSize() const;
    std::optional<RunOutcome> differentExtent() const;
    static RunOutcome qualified(const QString &sentence, const QString &nextStep = {},
                                const std::optional<NextStep> &offer = {}) {
        return {Verdict::Qualified, sentence, nextStep, offer};
    }
    static RunOutcome succeeded(const QString &sentence) {
        return {Verdict::Succeeded, sentence, {}};
    }
    QString leftOut() const;
    static void addRemark(RunOutcome &outcome, const QString &sentence, const QString &nextStep);
    bool isWrite() const { return facts_.operation == WriteOperation; }

    const RunFacts &facts_;
    const ToolReport &report_;
};

RunOutcome SuccessWording::outcome() const {
    RunOutcome outcome = byOperation();
    outcome.sentence = joinedSentences(outcome.sentence, leftOut());
    if (report_.ignoredId)
        addRemark(outcome, remarkOnChipId(report_),
                  tr("Check that the chip is the device chosen."));
    if (report_.adapterMissing)
        addRemark(outcome,
                  tr("The tool found no TSOP adapter, so nothing of this is to be trusted."),
                  putIntoAdapter());
    return outcome;
}

// A sentence on the memories of the chip that the run left out. That it left out the code memory
// is said elsewhere.
QString SuccessWording::leftOut() const {
    switch (facts_.operation) {
    case WriteOperation:
        return partsAlone(report_.partsWritten).isEmpty()
                   ? notWrittenWords(facts_.known.without(report_.partsWritten))
                   : QString();
    case VerifyOperation:
        return partsAlone(report_.partsRead).isEmpty()
                   ? notComparedWords(facts_.known.without(report_.partsRead))
                   : QString();
    case ReadOperation:
    case LogicOperation:
        break;
    }
    return {};
}

void SuccessWording::addRemark(RunOutcome &outcome, const QString &sentence,
                               const QString &nextStep) {
    outcome.verdict = Verdict::Qualified;
    outcome.sentence = joinedSentences(outcome.sentence, sentence);
    if (!nextStep.isEmpty())
        outcome.nextStep = nextStep;
}

RunOutcome SuccessWording::byOperation() const {
    if (facts_.operation == ReadOperation)
        return read();
    if (facts_.operation == LogicOperation)
        return succeeded(tr("Logic test succeeded."));
    std::optional<RunOutcome> different = differentExtent();
    if (!different)
        return isWrite() ? write() : verify();
    if (!facts_.imageIsShown)
        addRemark(*different,
                  tr("The file was \u201c%1\u201d, not the data shown.").arg(facts_.imagePath), {});
    return *different;
}

RunOutcome SuccessWording::read() const {
    const QString alone = partsAlone(report_.partsRead);
    return alone.isEmpty()
               ? succeeded(tr("Read succeeded."))
               : qualified(tr("Read succeeded for %1 alone; the chip's code memory was not read.")
                               .arg(alone));
}

RunOutcome SuccessWording::verify() const {
    return facts_.imageIsShown ? succeeded(tr("Verify succeeded: the chip holds the data to burn."))
                               : qualified(tr("Verify succeeded: the chip holds the file "
                                              "\u201c%1\u201d, not the data shown.")
                                               .arg(facts_.imagePath));
}

RunOutcome SuccessWording::write() const {
    if (facts_.imageIsShown && report_.verified)
        return succeeded(tr("Write succeeded and was verified."));
    const QString compare = tr("Press Verify to compare the chip with it.");
    if (facts_.imageIsShown)
        return qualified(tr("Write succeeded; it was not verified."), compare);
    return report_.verified
               ? qualified(
                     tr("Write succeeded and was verified: the chip holds the file \u201c%1\u201d, "
                        "not the data shown.")
                         .arg(facts_.imagePath))
               : qualified(tr("Write succeeded for the file \u201c%1\u201d, not the data shown; it "
                              "was not "
                              "verified.")
                               .arg(facts_.imagePath),
                           compare);
}

// The outcome where the bytes on the chip, or compared with it, are not just those of the file.
std::optional<RunOutcome> SuccessWording::differentExtent() const {
    if (const QString kind = nameOf(encodingOf(facts_)); !kind.isEmpty())
        return decoded(kind);
    const QString alone = partsAlone(isWrite() ? report_.partsWritten : report_.partsRead);
    if (!alone.isEmpty() && !isWrite())
        return qualified(
            tr("Verify succeeded for %1 alone; the chip's code memory was not compared.")
                .arg(alone));
    if (!alone.isEmpty())
        return qualified(
            report_.verified
                ? tr("Write succeeded for %1 alone; the chip's code memory was not written.")
                      .arg(alone)
                : tr("Write succeeded for %1 alone and was not verified; the chip's code memory "
                     "was not written.")
                      .arg(alone));
    if (const std::optional<WrongSize> &sizes = report_.ignoredSize)
        return sizes->found > sizes->needed ? longFile(*sizes) : shortFile(*sizes);
    if (keepsSizesSilent(facts_))
        return unknownSize();
    return std::nullopt;
}

RunOutcome SuccessWording::decoded(const QString &kind) const {
    const QString sentence =
        !isWrite() ? tr("Verify succeeded, but the tool decoded the file as %1 text: the chip "
                        "holds the decoded bytes, not those shown.")
        : report_.verified
            ? tr("Write succeeded, but the tool decoded the file as %1 text: the chip holds the "
                 "decoded bytes, not those shown.")
            : tr("Write succeeded, but the tool decoded the file as %1 text: it wrote the decoded "
                 "bytes, not those shown, and did not verify them.");
    return qualified(sentence.arg(kind), tr("Read the chip to see what it holds."));
}

RunOutcome SuccessWording::longFile(const WrongSize &sizes) const {
    const QString sentence =
        !isWrite() ? tr("Verify succeeded in part: the chip holds the first %1 of %2 bytes; %3 "
                        "were not compared.")
        : report_.verified ? tr("Write succeeded in part: the first %1 of %2 bytes are on the "
                                "chip; %3 are not.")
                           : tr("Write succeeded in part and was not verified: the first %1 of %2 "
                                "bytes were written; %3 were not.");
    return qualified(sentence.arg(grouped(sizes.needed), grouped(sizes.found),
                                  grouped(sizes.found - sizes.needed)),
                     tr("Choose a larger chip or shorter data."));
}

// What lies behind the end is not certain: the tool fills the block that it reads at a time, and
// what comes after that is as the erasure, or somebody else, left it.
RunOutcome SuccessWording::shortFile(const WrongSize &sizes) const {
    const std::optional<nextSteps::PadTo> padTo = padToReach(sizes.needed, facts_);
    const QString needed = grouped(sizes.needed);
    const QString nextStep =
        padTo ? tr("Turn on Pad with Pad to %1 KiB (%2 bytes) to cover the whole chip.")
                    .arg(QString::number(padTo->kibibytes), needed)
              : tr("Use a file of %1 bytes to cover the whole chip.").arg(needed);
    if (!isWrite())
        return qualified(tr("Verify succeeded in part: only the first %1 of the chip's %2 bytes "
                            "were compared.")
                             .arg(grouped(sizes.found), needed),
                         nextStep, padTo);
    const QString sentence =
        report_.verified
            ? tr("Write succeeded, but the file is shorter than the chip: all %1 bytes are on it; "
                 "its other %2 bytes are not from the file.")
            : tr("Write succeeded, but the file is shorter than the chip: all %1 bytes were "
                 "written and not verified; its other %2 bytes are not from the file.");
    return qualified(sentence.arg(grouped(sizes.found), grouped(sizes.needed - sizes.found)),
                     nextStep, padTo);
}

RunOutcome SuccessWording::unknownSize() const {
    const QString sentence =
        !isWrite() ? tr("Verify succeeded as far as both the file and the chip go: with -S the "
                        "tool does not say whether one is longer.")
        : report_.verified
            ? tr("Write succeeded and was verified as far as both the file and the chip go: with "
                 "-S the tool does not say whether one is longer.")
            : tr("Write succeeded as far as both the file and the chip go, and was not verified: "
                 "with -S the tool does not say whether one is longer.");
    return qualified(sentence,
                     tr("Take \u201c-S\u201d out of the field Programmer tool to be told."));
}

} // namespace

bool saidSuccess(const RunFacts &facts) {
    const ToolReport &report = facts.report;
    if (report.error)
        return false;
    switch (facts.operation) {
    case ReadOperation:
        return !report.partsRead.isEmpty() && report.lastStepDone;
    case VerifyOperation:
        return report.verified;
    case WriteOperation:
        return !report.partsWritten.isEmpty() && (report.verified || report.lastStepDone);
    case LogicOperation:
        break;
    }
    return report.logicPassed && report.logicTested;
}

RunOutcome outcomeOfSuccess(const RunFacts &facts) {
    return SuccessWording(facts).outcome();
}
