// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/device_searcher.h"

#include "base/Log.h"
#include "base/MainQueue.h"
#include "base/NumberWords.h"
#include "base/WorkState.h"
#include "devices/DeviceListModel.h"
#include "devices/DeviceListView.h"
#include "files/FileLoading.h"
#include "files/FolderRoom.h"
#include "language/CommandDoubt.h"
#include "language/CommandLine.h"
#include "language/DeviceListing.h"
#include "language/SearchOutcome.h"
#include "language/Sentences.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "settings/ToolTrust.h"
#include "tool/PluggedProgrammers.h"
#include "tool/ScriptedMiniPro.h"

#include <QFileInfo>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QPushButton>

#include <chrono>
#include <utility>

namespace {

/// What is selected in \a list takes the place of what is selected in \a other.
void haveOneSelection(const DeviceListView &list, DeviceListView &other) {
    QObject::connect(list.selectionModel(), &QItemSelectionModel::selectionChanged, &other,
                     [&other](const QItemSelection &selected) {
                         if (!selected.isEmpty())
                             other.clearSelection();
                     });
}

constexpr qsizetype expectedRuns = 10;
constexpr std::chrono::seconds silencePatience(2);

Result<DeviceListing> loadListing(const QString &path) {
    const Result<QString> text = loadUtf8Text(path, largestList);
    if (const Failure *failure = text.failure())
        return *failure;
    return readDeviceListing(*text);
}

} // namespace

device_searcher::device_searcher(SettingsStore &settings, ToolTrust &toolTrust, Log &log,
                                 MainQueue &queue, std::function<void()> beep, WorkState &work,
                                 QObject *parent)
    : QObject(parent),
      defaults(settings),
      toolTrust_(toolTrust),
      log_(log),
      queue_(queue),
      beep_(std::move(beep)),
      work_(work) {
    retainArray.reserve(expectedRuns);
    silence_.setInterval(silencePatience);
    connect(&silence_, &QTimer::timeout, this, &device_searcher::remarkOnSilence);
}

device_searcher::~device_searcher() = default;

void device_searcher::connectPanel() {
    const auto count = [this] { return qint64(numberOfRowsInTableView(model_)); };
    const auto name = [this](qint64 row) {
        return tableView_objectValueForTableColumn_row(model_, QString(), row);
    };
    model_ = new DeviceListModel({count, name}, this);
    tableview->setModel(model_);
    connectList(*tableview);
    if (!likelyView)
        return;
    likelyView->setModel(&likelyModel_);
    connectList(*likelyView);
    haveOneSelection(*tableview, *likelyView);
    haveOneSelection(*likelyView, *tableview);
}

void device_searcher::connectList(DeviceListView &list) {
    connect(&list, &DeviceListView::doubleClickedAnywhere, this,
            [this, &list] { doubleClick(&list); });
    connect(&list, &DeviceListView::enterPressed, this, &device_searcher::confirmSelection);
    connect(list.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &device_searcher::endRequest);
}

void device_searcher::setLikely(const QStringList &names) {
    likely_ = names;
    showLikely();
}

void device_searcher::showLikely() {
    likelyModel_.setStringList(filter_.passing(likely_));
}

void device_searcher::list(QObject *) {
    if (!work_.isIdle()) {
        if (!isSearching())
            say(tr("%1: wait for its end.").arg(whatIsRunning(work_.now())));
        return;
    }
    auto *run = new ScriptedMiniPro(defaults, log_, queue_, this);
    retainArray.append(run);
    emit runMade(run);
    const QString term = devicesearchterm->text();
    if (term.isEmpty()) {
        beep_();
        say(tr("Enter a part of the device's name."));
        devicesearchterm->setFocus(Qt::OtherFocusReason);
        return;
    }
    const Result<void> ours = mayUseFolder_();
    if (const Failure *failure = ours.failure())
        return say(folderMayNotBeUsed(temporaryFolder(defaults), *failure));
    if (asksFirst(term))
        return;
    runSearch(*run, term);
    remarkOnResults(*run, takeResults());
    run->releaseOutput();
}

void device_searcher::setFolderGuard(FolderGuard mayUseFolder) {
    mayUseFolder_ = std::move(mayUseFolder);
}

// Whatever is said takes the place of a question.
void device_searcher::say(const QString &sentence) {
    press_.forget();
    requestStands_ = false;
    emit remark(sentence);
}

bool device_searcher::asksFirst(const QString &term) {
    const QString tool = defaults.stringValue(settingsKeys::miniproLocation);
    const QString path = absolutePathOf(defaults, settingsKeys::temp_search_results_file);
    const CommandDoubt doubt{catalogueCommand(tool, term, path),
                             oddCharactersInCatalogue(tool, path), !toolTrust_.covers(tool)};
    const QString anyTerm = catalogueCommand(tool, QString(), path);
    if (!doubt.asks() || letRun_ == anyTerm)
        return false;
    if (!press_.confirms(doubt.command)) {
        requestStands_ = false;
        emit remark(tr("%1 Press Search again to run it.").arg(sentenceOf(doubt)));
        return true;
    }
    letRun_ = anyTerm;
    toolTrust_.trust(tool);
    return false;
}

void device_searcher::runSearch(ScriptedMiniPro &run, const QString &term) {
    work_.begin(Work::Searching);
    current_ = &run;
    outputSeen_ = 0;
    silence_.start();
    connect(&run, &ScriptedMiniPro::said, this, &device_searcher::remarkOnWords);
    say(tr("Searching\u2026"));
    emit searchRunningChanged(true);
    run.list(term);
    silence_.stop();
    current_ = nullptr;
    work_.end();
    emit searchRunningChanged(false);
}

void device_searcher::stop() {
    if (!current_)
        return;
    work_.stop();
    current_->stop();
}

void device_searcher::remarkOnWords() {
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

void device_searcher::remarkOnSilence() {
    const ScriptedMiniPro *run = current_;
    if (!run)
        return;
    if (run->printed() == outputSeen_)
        say(remarkOnSilentSearch());
    outputSeen_ = run->printed();
}

Result<qsizetype> device_searcher::takeResults() {
    const QString path = resolvedPathOf(defaults, settingsKeys::temp_search_results_file);
    const Result<DeviceListing> read = loadListing(path);
    const DeviceListing listing = read ? *read : DeviceListing();
    log_.write(QStringLiteral("list has returned:%1").arg(listing.lines));
    dataArray = listing.names;
    log_.write(QStringLiteral("dataArray has:%1").arg(dataArray->size()));
    const QString folder = QFileInfo(path).path();
    fullFolder_ = listing.looksCut && isFull(folder) ? folder : QString();
    model_->reloadData();
    emit listed(listing.names);
    if (const Failure *failure = read.failure())
        return *failure;
    return dataArray->size();
}

void device_searcher::remarkOnResults(const ScriptedMiniPro &run,
                                      const Result<qsizetype> &devices) {
    RunFacts facts = run.facts();
    facts.programmers = pluggedProgrammers();
    outcome_ = judgeSearch({facts, devices, fullFolder_});
    sayOutcome();
}

// It is said when the filter hides names, or a list that it leaves empty would look like none.
void device_searcher::sayOutcome() {
    const int shown = model_->rowCount();
    const bool isWhole = quint64(shown) == numberOfRowsInTableView(tableview);
    say(isWhole ? outcome_
                : joinedSentences(outcome_, tr("%1 of them pass the filter.").arg(grouped(shown))));
}

void device_searcher::filter(const QString &typed) {
    filter_ = NameFilter(typed);
    model_->setFilter(filter_);
    showLikely();
    if (!isSearching() && dataArray)
        sayOutcome();
}

std::optional<QString> device_searcher::selectedItem(QObject *) const {
    const QModelIndexList selected = tableview->selectionModel()->selectedRows();
    const QModelIndexList likely =
        likelyView ? likelyView->selectionModel()->selectedRows() : QModelIndexList();
    if (selected.isEmpty())
        return likely.isEmpty() ? std::nullopt : std::optional(likely.first().data().toString());
    return dataArray->at(model_->nameInRow(selected.first().row()));
}

void device_searcher::confirmSelection() {
    if (selectedItem(tableview)) {
        OKButton->click();
        return;
    }
    say(tr("Select a device first."));
    requestStands_ = true;
}

void device_searcher::endRequest() {
    if (requestStands_)
        sayOutcome();
}

void device_searcher::doubleClick(QObject *) {
    log_.write(QStringLiteral("doubleClick:"));
    queue_.async([button = QPointer<QPushButton>(OKButton)] {
        if (button)
            button->click();
    });
}

quint64 device_searcher::numberOfRowsInTableView(QObject *) const {
    return dataArray ? quint64(dataArray->size()) : 0;
}

QString device_searcher::tableView_objectValueForTableColumn_row(QObject *, const QString &,
                                                                 qint64 row) const {
    return dataArray->at(row);
}

bool device_searcher::tableView_shouldEditTableColumn_row(QObject *, const QString &,
                                                          qint64) const {
    return false;
}

bool device_searcher::tableView_shouldSelectRow(QObject *, qint64) const {
    return true;
}

bool device_searcher::tableView_shouldSelectTableColumn(QObject *, const QString &) const {
    return false;
}
