// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "blocks/PasteReading.h"

#include "base/TurnOfWork.h"

#include <utility>

PasteReading::PasteReading(QObject *parent)
    : QObject(parent), work_([this] { return text_->advance(textInStep); }) {
    connect(&work_, &TurnedWork::done, this, &PasteReading::finish);
    connect(&work_, &TurnedWork::outOfMemory, this, [this] {
        text_.reset();
        emit outOfMemory();
    });
}

void PasteReading::read(const QString &text, PastedText::As as) {
    text_.emplace(text, as);
    work_.start();
    work_.takeTurn();
}

void PasteReading::finish() {
    const PastedText read = *std::exchange(text_, std::nullopt);
    emit finished(read);
}
