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

/// Width of the moving bar, in widths of a digit.
constexpr int barDigits = 12;

} // namespace

BusyIndicator::BusyIndicator(QWidget *parent, Clock clock)
    : QWidget(parent),
      clock_(std::move(clock)),
      bar_(new QProgressBar(this)),
      time_(new QLabel(this)) {
    bar_->setTextVisible(false);
    bar_->setRange(0, 0);
    bar_->setFixedWidth(barDigits * fontMetrics().horizontalAdvance(QLatin1Char('0')));
    bar_->setFixedHeight(fontMetrics().height() * 2 / 3);
    bar_->setAccessibleName(tr("Running"));
    time_->setAccessibleName(tr("Elapsed time"));
    time_->setMinimumWidth(fontMetrics().horizontalAdvance(elapsedText(0)) * 2);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    for (QWidget *part : {static_cast<QWidget *>(bar_), static_cast<QWidget *>(time_)}) {
        QSizePolicy policy = part->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        part->setSizePolicy(policy);
        part->hide();
        row->addWidget(part, 0, Qt::AlignVCenter);
    }
}

void BusyIndicator::start() {
    startedAt_ = clock_();
    timer_.start(refreshMilliseconds, this);
    showElapsed();
    bar_->show();
    time_->show();
}

void BusyIndicator::stop() {
    timer_.stop();
    bar_->hide();
    time_->hide();
    time_->clear();
}

QString BusyIndicator::text() const {
    return time_->text();
}

void BusyIndicator::timerEvent(QTimerEvent *event) {
    if (event->timerId() == timer_.timerId())
        showElapsed();
    else
        QWidget::timerEvent(event);
}

void BusyIndicator::showElapsed() {
    time_->setText(elapsedText(clock_() - startedAt_));
}

QString BusyIndicator::elapsedText(qint64 milliseconds) {
    const qint64 seconds = milliseconds / millisecondsPerSecond;
    const qint64 minutes = seconds / secondsPerMinute;
    const qint64 hours = minutes / minutesPerHour;
    const auto twoDigits = [](qint64 number) {
        return QString::number(number).rightJustified(2, QLatin1Char('0'));
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
