// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/DeviceSearch.h"

#include "base/WorkState.h"
#include "files/FileLoading.h"
#include "files/FileRemoval.h"
#include "files/FolderRoom.h"
#include "language/CommandDoubt.h"
#include "language/CommandLine.h"
#include "language/SearchOutcome.h"
#include "language/Sentences.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "settings/ToolTrust.h"
#include "tool/PluggedProgrammers.h"
#include "tool/ScriptedMiniPro.h"

#include <QFileInfo>

#include <chrono>
#include <utility>

namespace {

constexpr std::chrono::seconds silencePatience(2);

Result<DeviceListing> loadListing(const QString &path) {
    const Result<QString> text = loadUtf8Text(path, largestList);
    if (const Failure *failure = text.failure())
        return *failure;
    return readDeviceListing(*text);
}

} // namespace

DeviceSearch::DeviceSearch(SettingsStore &settings, ToolTrust &toolTrust, WorkState &work)
    : defaults_(settings), toolTrust_(toolTrust), work_(work) {
    silence_.setInterval(silencePatience);
    connect(&silence_, &QTimer::timeout, this, &DeviceSearch::remarkOnSilence);
}

void DeviceSearch::setFolderGuard(FolderGuard mayUseFolder) {
    mayUseFolder_ = std::move(mayUseFolder);
}

// Whatever is said takes the place of a question.
void DeviceSearch::say(const QString &sentence) {
    press_.forget();
    emit remark(sentence);
}

bool DeviceSearch::mayRun(const QString &term) {
    const Result<void> ours = mayUseFolder_();
    if (const Failure *failure = ours.failure()) {
        say(folderMayNotBeUsed(temporaryFolder(defaults_), *failure));
        return false;
    }
    return !asksFirst(term);
}

bool DeviceSearch::asksFirst(const QString &term) {
    const QString tool = defaults_.stringValue(settingsKeys::miniproLocation);
    const QString path = absolutePathOf(defaults_, settingsKeys::temp_search_results_file);
    const CommandDoubt doubt{catalogueCommand(tool, term, path),
                             oddCharactersInCatalogue(tool, path), !toolTrust_.covers(tool)};
    const QString anyTerm = catalogueCommand(tool, QString(), path);
    if (!doubt.asks() || letRun_ == anyTerm)
        return false;
    if (!press_.confirms(doubt.command)) {
        emit remark(tr("%1 Press Search again to run it.").arg(sentenceOf(doubt)));
        return true;
    }
    letRun_ = anyTerm;
    toolTrust_.trust(tool);
    return false;
}

DeviceSearch::Found DeviceSearch::run(ScriptedMiniPro &run, const QString &term) {
    work_.begin(Work::Searching);
    current_ = &run;
    outputSeen_ = 0;
    silence_.start();
    connect(&run, &ScriptedMiniPro::said, this, &DeviceSearch::remarkOnWords);
    say(tr("Searching\u2026"));
    emit runningChanged(true);
    const Result<void> cleared = clearResults();
    run.list(term);
    silence_.stop();
    current_ = nullptr;
    work_.end();
    emit runningChanged(false);
    return takeResults(run, cleared);
}

// The shell may never come to open the file, and what an earlier search found would be taken for
// what this one did.
Result<void> DeviceSearch::clearResults() const {
    return clearFile(resolvedPathOf(defaults_, settingsKeys::temp_search_results_file));
}

void DeviceSearch::stop() {
    if (!current_)
        return;
    work_.stop();
    current_->stop();
}

void DeviceSearch::remarkOnWords() {
    if (!current_)
        return;
    RunFacts facts = current_->facts();
    if (!findsNoProgrammer(facts.report))
        return;
    disconnect(current_, &ScriptedMiniPro::said, this, nullptr);
    silence_.stop();
    facts.programmers = pluggedProgrammers();
    say(remarkOnWaitingSearch(facts));
}

void DeviceSearch::remarkOnSilence() {
    const ScriptedMiniPro *run = current_;
    if (!run)
        return;
    if (run->printed() == outputSeen_)
        say(remarkOnSilentSearch());
    outputSeen_ = run->printed();
}

DeviceSearch::Found DeviceSearch::takeResults(const ScriptedMiniPro &run,
                                              const Result<void> &cleared) const {
    const QString path = resolvedPathOf(defaults_, settingsKeys::temp_search_results_file);
    const Result<DeviceListing> listing =
        cleared ? loadListing(path) : Result<DeviceListing>(*cleared.failure());
    SearchFacts facts{run.facts()};
    facts.run.programmers = pluggedProgrammers();
    if (const Failure *failure = listing.failure())
        facts.devices = *failure;
    else
        facts.devices = listing->names.size();
    const QString folder = QFileInfo(path).path();
    if (listing && listing->looksCut && isFull(folder))
        facts.fullFolder = folder;
    return {listing ? *listing : DeviceListing(), judgeSearch(facts)};
}
