// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/BusyIndicator.h"

#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QTimerEvent>

#include <utility>

namespace {

constexpr qint64 millisecondsPerSecond = 1000;
constexpr qint64 secondsPerMinute = 60;
constexpr qint64 minutesPerHour = 60;

/// Often enough that no second is skipped to the eye.
constexpr int refreshMilliseconds = 200;

/// Least width of the bar, in widths of a digit.
constexpr int barDigits = 12;

/// Steps of the bar: finer than a percent, as the screen is.
constexpr int barSteps = 1000;

} // namespace

BusyIndicator::BusyIndicator(QWidget *parent, Clock clock)
    : QWidget(parent),
      clock_(std::move(clock)),
      step_(new QLabel(this)),
      bar_(new QProgressBar(this)),
      time_(new QLabel(this)),
      silence_(new QLabel(this)) {
    bar_->setMinimumWidth(barDigits * fontMetrics().horizontalAdvance(QLatin1Char('0')));
    bar_->setAccessibleName(tr("Progress"));
    time_->setAccessibleName(tr("Elapsed time"));
    time_->setMinimumWidth(fontMetrics().horizontalAdvance(elapsedText(0)) * 2);
    step_->setAccessibleName(tr("Step"));
    silence_->setAccessibleName(tr("Silence"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    for (QWidget *part : parts()) {
        QSizePolicy policy = part->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        part->setSizePolicy(policy);
        part->hide();
        row->addWidget(part, part == bar_ ? 1 : 0,
                       part == bar_ ? Qt::Alignment() : Qt::AlignVCenter);
    }
}

QList<QWidget *> BusyIndicator::parts() const {
    return {step_, bar_, time_, silence_};
}

void BusyIndicator::start(const QString &step) {
    startedAt_ = clock_();
    timer_.start(refreshMilliseconds, this);
    showStep(step, std::nullopt);
    for (QWidget *part : parts())
        part->show();
}

void BusyIndicator::showStep(const QString &step, std::optional<double> done) {
    if (!isRunning())
        return;
    heardAt_ = clock_();
    step_->setText(step);
    bar_->setRange(0, done ? barSteps : 0);
    bar_->setTextVisible(done.has_value());
    if (done)
        bar_->setValue(qRound(*done * barSteps));
    bar_->setAccessibleDescription(step);
    showTimes();
}

void BusyIndicator::stop() {
    timer_.stop();
    for (QWidget *part : parts())
        part->hide();
    for (QLabel *label : {step_, time_, silence_})
        label->clear();
}

QString BusyIndicator::text() const {
    return time_->text();
}

QString BusyIndicator::step() const {
    return step_->text();
}

QString BusyIndicator::silence() const {
    return silence_->text();
}

void BusyIndicator::timerEvent(QTimerEvent *event) {
    if (event->timerId() == timer_.timerId())
        showTimes();
    else
        QWidget::timerEvent(event);
}

void BusyIndicator::showTimes() {
    const qint64 now = clock_();
    time_->setText(elapsedText(now - startedAt_));
    const qint64 silent = now - heardAt_;
    silence_->setText(silent < longestUnsaidSilence.count()
                          ? QString()
                          : tr("silent for %1").arg(elapsedText(silent)));
}

QString BusyIndicator::elapsedText(qint64 milliseconds) {
    const qint64 seconds = milliseconds / millisecondsPerSecond;
    const qint64 minutes = seconds / secondsPerMinute;
    const qint64 hours = minutes / minutesPerHour;
    const auto twoDigits = [](qint64 number) {
        return QString::number(number).rightJustified(2, u'0');
    };
    const QString second = twoDigits(seconds % secondsPerMinute);
    if (hours == 0)
        return QStringLiteral("%1:%2").arg(QString::number(minutes), second);
    return QStringLiteral("%1:%2:%3")
        .arg(QString::number(hours), twoDigits(minutes % minutesPerHour), second);
}

qint64 BusyIndicator::monotonicClock() {
    QElapsedTimer now;
    now.start();
    return now.msecsSinceReference();
}
