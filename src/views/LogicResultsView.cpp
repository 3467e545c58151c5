// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/LogicResultsView.h"

#include "base/ShownName.h"
#include "control/FilePanels.h"
#include "control/LogicSeries.h"
#include "files/SuggestedName.h"
#include "grid/GridView.h"
#include "grid/ShownTab.h"
#include "language/CommandLine.h"
#include "language/PinLevels.h"
#include "language/PinTally.h"
#include "language/RunRecord.h"
#include "views/PackageDrawing.h"
#include "views/PackageView.h"
#include "views/RepeatControls.h"
#include "widgets/TabView.h"

#include <QAction>
#include <QEvent>
#include <QItemSelectionModel>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

LogicResultsView::LogicResultsView(QWidget *parent)
    : QWidget(parent),
      package_(new PackageView(this)),
      area_(new QScrollArea(this)),
      text_(new QPlainTextEdit(this)),
      repeat_(new RepeatControls(this)) {
    package_->setAccessibleName(tr("Pins"));
    area_->setWidget(package_);
    area_->setWidgetResizable(true);
    area_->setFocusPolicy(Qt::NoFocus);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    text_->setAccessibleName(tr("Failed pins"));
    text_->setReadOnly(true);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text_->setTabChangesFocus(true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(area_, 3);
    column->addWidget(text_, 1);
    column->addWidget(repeat_);
    addSaving();
    hide();
}

void LogicResultsView::addSaving() {
    const auto add = [this](const QString &text, void (LogicResultsView::*slot)()) {
        auto *action = new QAction(text, this);
        connect(action, &QAction::triggered, this, slot);
        package_->addAction(action);
    };
    add(tr("Save as &picture\u2026"), &LogicResultsView::savePicture);
    add(tr("Save as &text\u2026"), &LogicResultsView::saveText);
}

void LogicResultsView::follow(const Sources &sources) {
    sources_.emplace(sources);
    connect(&sources.tabs, &TabView::didSelectTabViewItem, this, &LogicResultsView::takeReport);
    connect(sources.grid.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &LogicResultsView::showPins);
    setTabOrder(&sources.grid, package_);
    setTabOrder(package_, text_);
    repeat_->setTabPlaceAfter(text_);
    connect(&sources.series, &LogicSeries::changed, this, &LogicResultsView::takeSeries);
    fit();
    takeReport();
}

void LogicResultsView::takeRun(const RunRecord &run) {
    if (run.operation != LogicOperation)
        return;
    device_ = run.device;
    takeReport();
}

// Which device the new runs test is known only when the first is over.
void LogicResultsView::takeSeries() {
    const LogicSeries &series = sources_->series;
    if (series.isRunning() && series.tally().runs() == 0)
        device_.clear();
    takeReport();
}

void LogicResultsView::takeReport() {
    const bool onResults = shownTab(sources_->tabs) == ShownTab::LogicTest;
    const LogicReport report = onResults ? sources_->report() : LogicReport();
    if (!onResults || tellsOfPackage(report) || !keepsReport())
        report_ = report;
    const bool drawable = tellsOfPackage(report_);
    if (drawable) {
        failures_ = isRepeated() ? sources_->series.tally().failures() : pinFailures(report_);
        showText();
        showPins();
    }
    setVisible(drawable);
}

bool LogicResultsView::isRepeated() const {
    return sources_->series.state() != LogicSeries::State::None;
}

// There is no report while the tool runs, and after a run that left none. What was counted until
// then stays, and the button keeps the focus.
bool LogicResultsView::keepsReport() const {
    return isRepeated() && sources_->series.state() != LogicSeries::State::Complete;
}

void LogicResultsView::showText() {
    QStringList lines;
    if (isRepeated()) {
        lines << sources_->series.words() << countedWords({}) << QString();
        if (lines.first().isEmpty())
            lines.removeFirst();
    }
    if (!failures_.isEmpty())
        lines << sentencesFor(failures_) << QString();
    else if (!isRepeated())
        lines << noPinFailedWords() << QString();
    text_->setPlainText((lines + levelLegend()).join(u'\n'));
}

QStringList LogicResultsView::countedWords(std::optional<int> vector) const {
    const PinTally &tally = sources_->series.tally();
    if (tally.runs() == 0)
        return {tr("Nothing has been counted yet")};
    const QStringList failed = tally.sentences(vector);
    return failed.isEmpty() ? QStringList(noPinFailedWords()) : failed;
}

void LogicResultsView::showPins() {
    if (!tellsOfPackage(report_))
        return;
    const auto row = chosenRow();
    const auto vector = row ? std::optional(vectorNumber(report_, *row)) : std::nullopt;
    PackagePicture picture{captionFor(vector),
                           row ? pinsInVector(report_, *row) : worstOfPins(report_)};
    if (isRepeated())
        addCounts(picture, vector);
    package_->setPicture(picture, sentencesIn(vector));
    fit();
}

QString LogicResultsView::captionFor(std::optional<int> vector) const {
    const QString vectors =
        vector ? tr("vector %1").arg(QString::number(*vector)) : tr("all vectors");
    const LogicSeries &series = sources_->series;
    const QString runs = QString::number(series.tally().runs());
    QStringList parts;
    if (!device_.isEmpty())
        parts << shownName(device_);
    if (vector || !isRepeated())
        parts << vectors;
    if (series.state() == LogicSeries::State::Complete)
        parts << tr("%1 runs").arg(runs);
    else if (isRepeated())
        parts << tr("%1 of %2 runs").arg(runs, QString::number(series.plannedRuns()));
    return parts.join(tr(", ", "between device, vectors and runs"));
}

QStringList LogicResultsView::sentencesIn(std::optional<int> vector) const {
    if (isRepeated())
        return countedWords(vector);
    QList<PinFailure> failures = failures_;
    if (vector)
        failures.removeIf([vector](PinFailure failure) { return failure.vector != *vector; });
    return sentencesFor(failures);
}

// A pin that was good in the newest run may have failed before.
void LogicResultsView::addCounts(PackagePicture &picture, std::optional<int> vector) const {
    const LogicSeries &series = sources_->series;
    picture.runs = series.tally().runs();
    picture.plannedRuns = series.plannedRuns();
    picture.failedRuns = series.tally().failedRuns(vector);
    for (TestedPin &pin : picture.pins) {
        if (picture.runs == 0)
            pin = {pin.number, QChar(), PinState::Unchecked};
        else if (picture.failedRuns.contains(pin.number))
            pin.state = PinState::Failed;
    }
}

// The first row of the table has the numbers of the pins.
std::optional<qsizetype> LogicResultsView::chosenRow() const {
    if (sources_->grid.selection().rowCount() != 1)
        return std::nullopt;
    const qsizetype row = sources_->grid.selectionModel()->selection().first().top() - 1;
    if (row < 0 || row >= report_.rows.size())
        return std::nullopt;
    return row;
}

void LogicResultsView::fit() {
    const int frame = 2 * area_->frameWidth();
    const int runs = isRepeated() ? sources_->series.plannedRuns() : 0;
    setFixedWidth(packageSize(maxPins, font(), runs).width() + frame +
                  area_->verticalScrollBar()->sizeHint().width());
    area_->setMaximumHeight(package_->sizeHint().height() + frame);
}

void LogicResultsView::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (!sources_)
        return;
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fit();
}

QString LogicResultsView::wholeText() const {
    QString text = device_ + u'\n';
    const bool isCounted = isRepeated() && sources_->series.tally().runs() > 0;
    if (isCounted)
        text += tr("The table of the newest run:") + u'\n';
    if (isCounted || !isRepeated())
        text += plainTable(report_) + u'\n';
    return text + text_->toPlainText() + u'\n';
}

void LogicResultsView::savePicture() {
    emit saveRequested({tr("Save picture"), suggestedName(device_, QStringLiteral(".png")),
                        tr("Pictures"), QStringLiteral("png"),
                        [bytes = package_->png()] { return bytes; }});
}

void LogicResultsView::saveText() {
    emit saveRequested({tr("Save text"), suggestedName(device_, QStringLiteral(".txt")),
                        fileTypes::texts(), QStringLiteral("txt"),
                        [bytes = wholeText().toUtf8()] { return bytes; }});
}
