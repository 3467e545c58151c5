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

/// Often enough that no second is skipped to the eye, seldom enough that a screen reader, which
/// hears of each move of the bar, does not fall behind.
constexpr std::chrono::milliseconds refreshInterval(200);

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
    bar_->setMinimumWidth(barDigits * fontMetrics().horizontalAdvance(u'0'));
    bar_->setAccessibleName(tr("Progress"));
    time_->setAccessibleName(tr("Elapsed time"));
    time_->setMinimumWidth(fontMetrics().horizontalAdvance(elapsedText({})) * 2);
    step_->setTextFormat(Qt::PlainText); // it may hold words of the tool
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
    timer_.start(int(refreshInterval.count()), this);
    enterStep(step, std::nullopt);
    for (QWidget *part : parts())
        part->show();
}

void BusyIndicator::showStep(const QString &step, std::optional<double> done) {
    if (!isRunning())
        return;
    if (step != step_->text() || done.has_value() != done_.has_value())
        return enterStep(step, done);
    heardAt_ = clock_();
    done_ = done;
    showTimes();
}

void BusyIndicator::enterStep(const QString &step, std::optional<double> done) {
    heardAt_ = clock_();
    done_ = done;
    step_->setText(step);
    bar_->setAccessibleDescription(step);
    showDone();
    showTimes();
}

void BusyIndicator::showDone() {
    bar_->setRange(0, done_ ? barSteps : 0);
    bar_->setTextVisible(done_.has_value());
    if (done_)
        bar_->setValue(qRound(*done_ * barSteps));
}

void BusyIndicator::stop() {
    timer_.stop();
    for (QWidget *part : parts())
        part->hide();
    for (QLabel *label : {step_, time_, silence_})
        label->clear();
}

void BusyIndicator::timerEvent(QTimerEvent *event) {
    if (event->timerId() != timer_.timerId())
        return QWidget::timerEvent(event);
    showDone();
    showTimes();
}

void BusyIndicator::showTimes() {
    const std::chrono::milliseconds now = clock_();
    time_->setText(elapsedText(now - startedAt_));
    const std::chrono::milliseconds silent = now - heardAt_;
    silence_->setText(silent < longestUnsaidSilence ? QString()
                                                    : tr("silent for %1").arg(elapsedText(silent)));
}

QString BusyIndicator::elapsedText(std::chrono::milliseconds time) {
    const std::chrono::hh_mm_ss parts(std::chrono::floor<std::chrono::seconds>(time));
    const auto hours = parts.hours().count();
    const auto minutes = parts.minutes().count();
    const auto twoDigits = [](qint64 number) {
        return QString::number(number).rightJustified(2, u'0');
    };
    const QString second = twoDigits(parts.seconds().count());
    if (hours == 0)
        return QStringLiteral("%1:%2").arg(QString::number(minutes), second);
    return QStringLiteral("%1:%2:%3").arg(QString::number(hours), twoDigits(minutes), second);
}

std::chrono::milliseconds BusyIndicator::monotonicClock() {
    QElapsedTimer now;
    now.start();
    return std::chrono::milliseconds(now.msecsSinceReference());
}
