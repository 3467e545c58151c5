// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/LogicResultsView.h"

#include "files/SuggestedName.h"
#include "grid/GridColumns.h"
#include "grid/GridView.h"
#include "language/PinLevels.h"
#include "language/RunRecord.h"
#include "views/PackageView.h"
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
      text_(new QPlainTextEdit(this)) {
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
    addSaving();
    fit();
    hide();
}

void LogicResultsView::addSaving() {
    const auto add = [this](const QString &text, void (LogicResultsView::*slot)()) {
        auto *action = new QAction(text, this);
        connect(action, &QAction::triggered, this, slot);
        package_->addAction(action);
    };
    add(tr("Save as &picture…"), &LogicResultsView::savePicture);
    add(tr("Save as &text…"), &LogicResultsView::saveText);
}

void LogicResultsView::follow(const Sources &sources) {
    sources_.emplace(sources);
    connect(&sources.tabs, &TabView::didSelectTabViewItem, this, &LogicResultsView::takeReport);
    connect(sources.grid.gridModel(), &GridModel::modelReset, this, &LogicResultsView::takeReport);
    connect(sources.grid.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &LogicResultsView::showPins);
    setTabOrder(&sources.grid, package_);
    setTabOrder(package_, text_);
    takeReport();
}

void LogicResultsView::takeRun(const RunRecord &run) {
    if (run.operation != LogicOperation)
        return;
    device_ = run.device;
    takeReport();
}

void LogicResultsView::takeReport() {
    const bool onResults = sources_->tabs.selectedTabViewItem().identifier == logicTabIdentifier();
    report_ = onResults ? sources_->report() : LogicReport();
    const bool drawable = tellsOfPackage(report_);
    if (drawable) {
        failures_ = pinFailures(report_);
        showText();
        showPins();
    }
    setVisible(drawable);
}

void LogicResultsView::showText() {
    const QStringList failed = sentencesFor(failures_);
    const QStringList lines = failed.isEmpty() ? QStringList(tr("No pin failed")) : failed;
    text_->setPlainText((lines + QStringList(QString()) + levelLegend()).join(u'\n'));
}

void LogicResultsView::showPins() {
    if (!tellsOfPackage(report_))
        return;
    const auto row = chosenRow();
    QList<PinFailure> failures = failures_;
    QString vectors = tr("all vectors");
    if (row) {
        const int number = vectorNumber(report_, *row);
        failures.removeIf([number](PinFailure failure) { return failure.vector != number; });
        vectors = tr("vector %1").arg(QString::number(number));
    }
    const QString caption =
        device_.isEmpty() ? vectors : tr("%1, %2", "device, vectors").arg(device_, vectors);
    package_->setPicture({caption, row ? pinsInVector(report_, *row) : worstOfPins(report_)},
                         sentencesFor(failures));
    fit();
}

// The first row of the table has the numbers of the pins.
std::optional<qsizetype> LogicResultsView::chosenRow() const {
    if (sources_->grid.selectedRowCount() != 1)
        return std::nullopt;
    const qsizetype row = sources_->grid.selectionModel()->selection().first().top() - 1;
    if (row < 0 || row >= report_.rows.size())
        return std::nullopt;
    return row;
}

void LogicResultsView::fit() {
    const int frame = 2 * area_->frameWidth();
    setFixedWidth(packageSize(mostPins, font()).width() + frame +
                  area_->verticalScrollBar()->sizeHint().width());
    area_->setMaximumHeight(package_->sizeHint().height() + frame);
}

void LogicResultsView::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fit();
}

QString LogicResultsView::wholeText() const {
    return device_ + u'\n' + plainTable(report_) + u'\n' + text_->toPlainText() + u'\n';
}

void LogicResultsView::savePicture() {
    emit saveRequested({tr("Save picture"), suggestedName(device_, QStringLiteral(".png")),
                        tr("Pictures"), QStringLiteral("png"),
                        [bytes = package_->png()] { return bytes; }});
}

void LogicResultsView::saveText() {
    emit saveRequested({tr("Save text"), suggestedName(device_, QStringLiteral(".txt")),
                        tr("Text files"), QStringLiteral("txt"),
                        [bytes = wholeText().toUtf8()] { return bytes; }});
}
