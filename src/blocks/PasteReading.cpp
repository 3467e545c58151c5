// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "blocks/PasteReading.h"

#include <QElapsedTimer>

#include <chrono>
#include <new>
#include <utility>

namespace {

constexpr std::chrono::milliseconds turnTime{8};
/// UTF-16 units between two looks at the clock.
constexpr qsizetype stepText = qsizetype(32) * 1024;

} // namespace

PasteReading::PasteReading(QObject *parent) : QObject(parent) {
    connect(&turns_, &QTimer::timeout, this, &PasteReading::turn);
}

void PasteReading::read(const QString &text, PastedText::As as) {
    text_.emplace(text, as);
    turns_.start(0);
    turn();
}

void PasteReading::turn() {
    QElapsedTimer time;
    time.start();
    bool isDone = false;
    try {
        while (!isDone && !time.hasExpired(turnTime.count()))
            isDone = text_->advance(stepText);
    } catch (const std::bad_alloc &) {
        turns_.stop();
        text_.reset();
        emit outOfMemory();
        return;
    }
    if (!isDone)
        return;
    turns_.stop();
    const PastedText read = *std::exchange(text_, std::nullopt);
    emit finished(read);
}
