// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/RecordExport.h"

#include "base/TurnOfWork.h"

RecordExport::RecordExport(QObject *parent)
    : QObject(parent), work_([this] { return writer_->advance(bytes_, textInStep); }) {
    connect(&work_, &TurnedWork::done, this, &RecordExport::finish);
    connect(&work_, &TurnedWork::outOfMemory, this, [this] {
        stop();
        emit outOfMemory();
    });
}

void RecordExport::write(const QByteArray &bytes, const RecordLayout &layout) {
    bytes_ = bytes;
    writer_.emplace(layout, bytes.size());
    work_.start();
}

void RecordExport::stop() {
    work_.stop();
    writer_.reset();
    bytes_.clear();
}

void RecordExport::finish() {
    const QByteArray text = writer_->takeText();
    stop();
    emit written(text);
}
