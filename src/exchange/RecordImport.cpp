// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/RecordImport.h"

#include "base/TurnOfWork.h"
#include "base/Units.h"
#include <new>
#include <utility>

namespace {

/// Bytes between two looks at the clock.
constexpr qsizetype stepText = 32 * kibibyte;
constexpr qsizetype stepImage = mebibyte;

} // namespace

RecordImport::RecordImport(ByteBuffer file, QObject *parent)
    : QObject(parent), file_(std::move(file)) {
    connect(&turns_, &QTimer::timeout, this, &RecordImport::turn);
}

void RecordImport::read(RecordFormat format) {
    stop();
    reader_.emplace(format);
    turns_.start(0);
}

void RecordImport::stop() {
    turns_.stop();
    flattening_.reset();
    reader_.reset();
    isRead_ = false;
}

const DecodedRecords *RecordImport::decoded() const {
    return isRead_ ? &reader_->decoded() : nullptr;
}

int RecordImport::percent() const {
    constexpr int whole = 100;
    if (!reader_ || file_->isEmpty())
        return whole;
    return int(reader_->position() * whole / file_->size());
}

void RecordImport::makeImage(qint64 base, quint8 fill) {
    try {
        flattening_.emplace(reader_->decoded().bytes, base, char(fill));
        turns_.start(0);
    } catch (const std::bad_alloc &) {
        emit outOfMemory();
    }
}

void RecordImport::turn() {
    try {
        takeTurn();
    } catch (const std::bad_alloc &) {
        stop();
        emit outOfMemory();
    }
}

void RecordImport::takeTurn() {
    const bool isDone = worksForATurn([this] { return advance(); });
    if (isDone)
        turns_.stop();
    if (flattening_)
        return isDone ? finishImage() : void();
    isRead_ = isDone;
    emit advanced();
}

bool RecordImport::advance() {
    return flattening_ ? flattening_->advance(stepImage)
                       : reader_->advance(std::as_const(*file_), stepText);
}

void RecordImport::finishImage() {
    const ByteBuffer image = flattening_->image();
    flattening_.reset();
    emit imageMade(image);
}
