// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/SearchOutcome.h"

#include "base/NumberWords.h"
#include "base/Units.h"
#include "language/DeviceListing.h"
#include "language/FailureWords.h"
#include "language/RunEnd.h"
#include "language/Sentences.h"
#include "language/ToolReport.h"

#include <QCoreApplication>
#include <QDir>

#include <cerrno>
#include <utility>
#include <variant>

namespace {

using Verdict = RunOutcome::Verdict;

/// \a run with the question that a search asks taken for what it means: there is no programmer.
RunFacts withQuestionAsCause(RunFacts run) {
    if (findsNoProgrammer(run.report))
        run.report.error = toolErrors::NoProgrammer{};
    return run;
}

/// The words for one search.
class SearchWording {
    Q_DECLARE_TR_FUNCTIONS(SearchOutcome)

public:
    explicit SearchWording(RunFacts run) : run_(std::move(run)) {}

    QString waiting() const;
    QString stopped(bool hasNames) const;
    QString failed(const Result<qsizetype> &devices) const;

    static QString silent() {
        return tr("The tool is silent: it may wait for an answer that nobody can give. Stop the "
                  "search, see that a programmer is connected and start it again.");
    }
    static QString found(qsizetype devices) {
        return devices == 1 ? tr("1 device found.") : tr("%1 devices found.").arg(grouped(devices));
    }
    static QString cut(const QString &folder) {
        return tr("The list may not be whole: there is no room left in %1.")
            .arg(QDir::toNativeSeparators(folder));
    }
    static QString noMatch() { return tr("No device's name holds this term."); }
    static QString noList(const Failure &failure);

private:
    static QString notWhole() { return tr("The list may not be whole."); }

    RunFacts run_;
};

// A list that is too large, or no text, is not the tool's: what was started is another program.
QString SearchWording::noList(const Failure &failure) {
    const bool isTooLarge = failure.systemError == EFBIG;
    const bool isForeign =
        isTooLarge || failure.systemError == E2BIG || failure.systemError == EILSEQ;
    const QString reason =
        isTooLarge ? tr("it is larger than %1 MiB").arg(QString::number(largestList / mebibyte))
                   : failure.reason;
    const QString sentence = tr("The list of devices could not be read: %1.").arg(reason);
    const QString nextStep =
        isForeign
            ? checkToolAndSearchAgain()
            : tr("Search again; if that does not help, see that the folder for temporary files may "
                 "be written to and has room.");
    return joinedSentences(sentence, nextStep);
}

QString SearchWording::waiting() const {
    const FailureWords words = wordsForFailedSearch(run_);
    const QString what = joinedSentences(
        words.sentence, tr("The tool waits for an answer that nobody can give: stop the "
                           "search, and start it again once a programmer is connected."));
    const bool nothingElseToDo = run_.programmers && run_.programmers->isEmpty();
    return nothingElseToDo ? what : joinedSentences(what, words.nextStep);
}

QString SearchWording::stopped(bool hasNames) const {
    const QString sentence = tr("The search was stopped.");
    if (!findsNoProgrammer(run_.report))
        return hasNames ? joinedSentences(sentence, notWhole()) : sentence;
    const FailureWords words = wordsForFailedSearch(run_);
    return joinedSentences(joinedSentences(sentence, words.sentence), words.nextStep);
}

QString SearchWording::failed(const Result<qsizetype> &devices) const {
    if (!devices && !namesCause(endOf(run_)))
        return noList(*devices.failure());
    const FailureWords words = wordsForFailedSearch(run_);
    const bool isPart = devices && *devices > 0;
    return joinedSentences(isPart ? joinedSentences(words.sentence, notWhole()) : words.sentence,
                           words.nextStep);
}

} // namespace

QString judgeSearch(const SearchFacts &facts) {
    const RunFacts run = withQuestionAsCause(facts.run);
    const SearchWording wording(run);
    const bool hasNames = facts.devices && *facts.devices > 0;
    // The list of a search that was stopped may lack its end, however the tool took the signal.
    const bool isWhole = !run.stopRequested && (hasNames || !namesCause(endOf(run)));
    const Verdict verdict = verdictOf(run, isWhole);
    if (verdict == Verdict::Stopped)
        return wording.stopped(hasNames);
    if (verdict != Verdict::Succeeded)
        return wording.failed(facts.devices);
    if (const Failure *failure = facts.devices.failure())
        return SearchWording::noList(*failure);
    const bool isCut = !facts.fullFolder.isEmpty();
    if (!hasNames)
        return isCut ? SearchWording::cut(facts.fullFolder) : SearchWording::noMatch();
    const QString found = SearchWording::found(*facts.devices);
    return isCut ? joinedSentences(found, SearchWording::cut(facts.fullFolder)) : found;
}

bool findsNoProgrammer(const ToolReport &report) {
    return report.choiceAsked ||
           (report.error && std::holds_alternative<toolErrors::NoProgrammer>(*report.error));
}

QString remarkOnWaitingSearch(const RunFacts &run) {
    return SearchWording(withQuestionAsCause(run)).waiting();
}

QString remarkOnSilentSearch() {
    return SearchWording::silent();
}
