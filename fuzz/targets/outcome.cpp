// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "language/RunJudgement.h"
#include "language/SearchOutcome.h"
#include "language/ToolReportReader.h"

#include <cstddef>
#include <cstdint>

// Whatever the tool said and however it ended, the run has one verdict with a sentence, and none
// of the good ones without a reason.

namespace {

using Verdict = RunOutcome::Verdict;

ToolReport reportOn(const QString &said) {
    ToolReportReader reader;
    reader.take(said);
    return reader.report();
}

RunFacts factsFrom(FuzzInput &input) {
    RunFacts facts;
    facts.operation = Operation(input.number(3));
    facts.tool = QStringLiteral("/opt/minipro");
    facts.device = QStringLiteral("AT28C256");
    facts.imagePath = QStringLiteral("/home/me/temp.bin");
    facts.imageIsShown = input.truth();
    facts.encoding = ImageEncoding(input.number(2));
    if (input.truth())
        facts.imageLength = input.number(255) * 256;
    if (input.truth())
        facts.programmers = QList<UsbProgrammer>();
    if (input.number(15) == 1)
        facts.start = StartTrouble{Failure{QStringLiteral("No such file"), 2},
                                   StartTrouble::Cause(input.number(1))};
    facts.status = input.truth() ? 0 : input.number(255);
    facts.killedBySignal = input.number(15) == 1;
    facts.stopRequested = input.number(7) == 1;
    facts.report = reportOn(QString::fromUtf8(input.rest()));
    return facts;
}

void checkSuccess(const RunFacts &facts) {
    mustHold(bool(facts.start), "what did not start did not succeed");
    mustHold(facts.status == 0 && !facts.killedBySignal, "success is an exit with status 0");
    mustHold(!facts.report.error, "what names a cause of failure did not succeed");
    const bool tellsItsEnd = facts.report.verified || facts.report.lastStepDone;
    mustHold(facts.operation == LogicOperation ? facts.report.logicPassed : tellsItsEnd,
             "the tool told that it came to its end");
    mustHold(facts.operation != WriteOperation || facts.report.verified,
             "a Write that was not verified is qualified");
    mustHold(facts.operation != VerifyOperation || facts.report.verified,
             "a Verify that did not verify did not succeed");
    const bool handsOver = facts.operation == WriteOperation || facts.operation == VerifyOperation;
    mustHold(!handsOver || facts.imageIsShown, "the chip holds what is shown");
}

bool isFilledIn(const QString &words) {
    for (const char *place : {"%1", "%2", "%3"})
        if (words.contains(QLatin1String(place)))
            return false;
    return true;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    const RunFacts facts = factsFrom(input);
    const bool saysPercent = QByteArrayView(data, qsizetype(size)).contains('%');

    const RunOutcome outcome = judgeRun(facts);
    mustHold(!outcome.sentence.isEmpty(), "a verdict has a sentence");
    mustHold(outcome.words().startsWith(outcome.sentence), "the words begin with the sentence");
    if (outcome.verdict != Verdict::Stopped)
        mustHold((outcome.verdict == Verdict::NotStarted) == !facts.start,
                 "what could not be started, and only that, is called so");
    if (outcome.verdict == Verdict::Succeeded)
        checkSuccess(facts);

    const QString found = judgeSearch({facts, qsizetype(size % 3)});
    const QString unread = judgeSearch({facts, Failure{QStringLiteral("Denied"), 13}});
    mustHold(!found.isEmpty() && !unread.isEmpty(), "a search has a sentence");
    mustHold(saysPercent || isFilledIn(outcome.words() + found + unread),
             "every place in a sentence is filled in");
    return 0;
}
