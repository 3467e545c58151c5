// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/SearchOutcome.h"

#include "tool/FailureWords.h"
#include "tool/RunRemarks.h"
#include "tool/ShellStatus.h"

#include <QCoreApplication>

namespace {

/// The words for one search.
class SearchWording {
    Q_DECLARE_TR_FUNCTIONS(SearchOutcome)

public:
    explicit SearchWording(const RunFacts &run) : run_(run) {}

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
    static QString noMatch() { return tr("No device's name holds this term."); }
    static QString noList(const Failure &failure) {
        return tr("The list of devices could not be read: %1. Search again; if that does not help, "
                  "see that the folder for temporary files may be written to and has room.")
            .arg(failure.reason);
    }

private:
    FailureWords noProgrammer() const;
    static QString notWhole() { return tr("The list may not be whole."); }

    const RunFacts &run_;
};

QString joined(const QString &one, const QString &other) {
    return other.isEmpty() ? one : one + QLatin1Char(' ') + other;
}

FailureWords SearchWording::noProgrammer() const {
    RunFacts run = run_;
    run.status = 1;
    run.killedBySignal = false;
    run.report.error = toolErrors::NoProgrammer{};
    return wordsForFailedSearch(run);
}

QString SearchWording::waiting() const {
    const FailureWords words = noProgrammer();
    const QString what =
        joined(words.sentence, tr("The tool waits for an answer that nobody can give: stop the "
                                  "search, and start it again once a programmer is connected."));
    const bool nothingElseToDo = run_.programmers && run_.programmers->isEmpty();
    return nothingElseToDo ? what : joined(what, words.nextStep);
}

QString SearchWording::stopped(bool hasNames) const {
    const QString sentence = tr("The search was stopped.");
    if (!findsNoProgrammer(run_.report))
        return hasNames ? joined(sentence, notWhole()) : sentence;
    const FailureWords words = noProgrammer();
    return joined(joined(sentence, words.sentence), words.nextStep);
}

/// What went wrong has a name: the tool's, or the shell's for a tool that is not there.
bool hasKnownCause(const RunFacts &run) {
    return !run.start || run.report.error || !run.report.missingDatabase.isEmpty() ||
           run.killedBySignal || run.status >= shellStatus::couldNotExecute ||
           run.report.choiceAsked;
}

QString SearchWording::failed(const Result<qsizetype> &devices) const {
    if (!hasKnownCause(run_) && !devices)
        return noList(*devices.failure());
    const FailureWords words =
        run_.report.choiceAsked ? noProgrammer() : wordsForFailedSearch(run_);
    const bool isPart = devices && *devices > 0;
    return joined(isPart ? joined(words.sentence, notWhole()) : words.sentence, words.nextStep);
}

} // namespace

QString judgeSearch(const SearchFacts &facts) {
    const RunFacts &run = facts.run;
    const SearchWording wording(run);
    const bool hasNames = facts.devices && *facts.devices > 0;
    if (run.stopRequested)
        return wording.stopped(hasNames);
    const bool exitedWell = run.start && run.status == 0 && !run.killedBySignal;
    if (!exitedWell || (!hasNames && hasKnownCause(run)))
        return wording.failed(facts.devices);
    if (const Failure *failure = facts.devices.failure())
        return SearchWording::noList(*failure);
    return hasNames ? SearchWording::found(*facts.devices) : SearchWording::noMatch();
}

bool findsNoProgrammer(const ToolReport &report) {
    return report.choiceAsked ||
           (report.error && std::holds_alternative<toolErrors::NoProgrammer>(*report.error));
}

QString remarkOnWaitingSearch(const RunFacts &run) {
    return SearchWording(run).waiting();
}

QString remarkOnSilentSearch() {
    return SearchWording::silent();
}
