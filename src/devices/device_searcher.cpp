// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/device_searcher.h"

#include "base/BoundedText.h"
#include "base/Log.h"
#include "base/MainQueue.h"
#include "base/NumberWords.h"
#include "base/WorkState.h"
#include "devices/DeviceListModel.h"
#include "devices/DeviceListView.h"
#include "language/Sentences.h"
#include "tool/ScriptedMiniPro.h"
#include "widgets/WrappingLabel.h"

#include <QItemSelectionModel>
#include <QLineEdit>
#include <QPushButton>

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

} // namespace

device_searcher::device_searcher(SettingsStore &settings, ToolTrust &toolTrust, Log &log,
                                 MainQueue &queue, std::function<void()> beep, WorkState &work,
                                 QObject *parent)
    : QObject(parent),
      defaults(settings),
      log_(log),
      queue_(queue),
      beep_(std::move(beep)),
      work_(work),
      search_(settings, toolTrust, work) {
    retainArray.reserve(ScriptedMiniPro::expectedRuns);
    connect(&search_, &DeviceSearch::runningChanged, this, &device_searcher::searchRunningChanged);
    connect(&search_, &DeviceSearch::remark, this, &device_searcher::show);
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
        if (!search_.isRunning())
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
    if (!search_.mayRun(term))
        return;
    take(search_.run(*run, term));
    run->releaseOutput();
}

// Whatever is said takes the place of the request to select a device, and of a question.
void device_searcher::show(const QString &sentence) {
    requestStands_ = false;
    emit remark(boundedText(sentence, longestRemark));
}

void device_searcher::say(const QString &sentence) {
    search_.forgetQuestion();
    show(sentence);
}

void device_searcher::take(const DeviceSearch::Found &found) {
    log_.write(QStringLiteral("list has returned:%1").arg(found.listing.lines));
    dataArray = found.listing.names;
    log_.write(QStringLiteral("dataArray has:%1").arg(dataArray->size()));
    model_->reloadData();
    emit listed(*dataArray);
    outcome_ = found.outcome;
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
    if (!search_.isRunning() && dataArray)
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
