// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/RepeatControls.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QSpinBox>

RepeatControls::RepeatControls(QWidget *parent)
    : QWidget(parent), button_(new QPushButton(this)), times_(new QSpinBox(this)) {
    button_->setToolTip(tr("Test the IC again and again, and count which pins fail how often"));
    times_->setAccessibleName(tr("How many times"));
    times_->setToolTip(tr("How many times the test is run, from %1 to %2")
                           .arg(QString::number(minTimes), QString::number(maxTimes)));
    times_->setRange(minTimes, maxTimes);
    times_->setValue(usualTimes);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(button_, 1);
    row->addWidget(times_);
    connect(times_, &QSpinBox::valueChanged, this, &RepeatControls::showTimes);
    connect(button_, &QPushButton::clicked, this,
            [this] { emit repeatRequested(times_->value()); });
    showTimes(times_->value());
}

void RepeatControls::setTabPlaceAfter(QWidget *before) {
    setTabOrder(before, button_);
    setTabOrder(button_, times_);
}

void RepeatControls::showTimes(int times) {
    const QString text = tr("Run %1 times").arg(QString::number(times));
    button_->setText(text);
    button_->setAccessibleName(text);
}
