// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/RecordExport.h"

#include "base/TurnOfWork.h"
#include "base/Units.h"
#include <new>

namespace {

/// Bytes between two looks at the clock.
constexpr qsizetype encodedAtOnce = 32 * kibibyte;

} // namespace

RecordExport::RecordExport(QObject *parent) : QObject(parent) {
    connect(&turns_, &QTimer::timeout, this, &RecordExport::turn);
}

void RecordExport::write(const QByteArray &bytes, const RecordLayout &layout) {
    bytes_ = bytes;
    writer_.emplace(layout, bytes.size());
    turns_.start(0);
}

void RecordExport::turn() {
    try {
        takeTurn();
    } catch (const std::bad_alloc &) {
        stop();
        emit outOfMemory();
    }
}

void RecordExport::stop() {
    turns_.stop();
    writer_.reset();
    bytes_.clear();
}

void RecordExport::takeTurn() {
    if (!worksForATurn([this] { return writer_->advance(bytes_, encodedAtOnce); }))
        return;
    const QByteArray text = writer_->takeText();
    stop();
    emit written(text);
}
