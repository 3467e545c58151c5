// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/RecordImport.h"

#include "base/TurnOfWork.h"

#include <new>
#include <utility>

RecordImport::RecordImport(ByteBuffer file, QObject *parent)
    : QObject(parent), file_(std::move(file)), work_([this] { return advance(); }) {
    connect(&work_, &TurnedWork::advanced, this, [this] {
        if (!flattening_)
            emit advanced();
    });
    connect(&work_, &TurnedWork::done, this, &RecordImport::finish);
    connect(&work_, &TurnedWork::outOfMemory, this, [this] {
        stop();
        emit outOfMemory();
    });
}

void RecordImport::read(RecordFormat format) {
    stop();
    reader_.emplace(format);
    work_.start();
}

void RecordImport::stop() {
    work_.stop();
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
        work_.start();
    } catch (const std::bad_alloc &) {
        emit outOfMemory();
    }
}

bool RecordImport::advance() {
    return flattening_ ? flattening_->advance(bytesInStep)
                       : reader_->advance(std::as_const(*file_), textInStep);
}

void RecordImport::finish() {
    if (const auto made = std::exchange(flattening_, std::nullopt))
        return emit imageMade(made->image());
    isRead_ = true;
    emit advanced();
}
