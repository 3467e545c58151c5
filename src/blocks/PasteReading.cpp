// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "blocks/PasteReading.h"

#include "base/TurnOfWork.h"
#include "base/Units.h"

#include <new>
#include <utility>

namespace {

/// UTF-16 units between two looks at the clock.
constexpr qsizetype stepText = 32 * kibibyte;

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
    bool isDone = false;
    try {
        isDone = worksForATurn([this] { return text_->advance(stepText); });
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
