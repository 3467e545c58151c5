// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/TurnedWork.h"
#include "formats/RecordWriter.h"

#include <QObject>

#include <optional>

/// Writes bytes as text of records on turns of the event loop that are shorter than a frame.
class RecordExport final : public QObject {
    Q_OBJECT

public:
    explicit RecordExport(QObject *parent = nullptr);

    /// Begins to write \a bytes as \a layout says, instead of what it wrote before. written()
    /// follows.
    void write(const QByteArray &bytes, const RecordLayout &layout);
    bool isWriting() const { return writer_.has_value(); }

signals:
    void written(const QByteArray &text);
    /// There is not enough memory for the text.
    void outOfMemory();

private:
    void stop();
    void finish();

    QByteArray bytes_;
    std::optional<RecordWriter> writer_;
    TurnedWork work_;
};
