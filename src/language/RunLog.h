// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/RunRecord.h"

#include <QList>
#include <QObject>

/// The runs of this start and what came of them. The oldest ones stay, but what they said is
/// forgotten.
class RunLog final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// How many runs keep what the tool said.
    static constexpr qsizetype maxRememberedWords = 20;

    void add(const RunRecord &record);
    /// The oldest first.
    const QList<RunRecord> &records() const { return records_; }
    /// True if nothing has been written since the last Read, and that brought its data. After one
    /// that failed another chip may be in the socket.
    bool nothingWrittenSinceRead() const;

signals:
    /// A run was added; it is the last of records().
    void added();

private:
    QList<RunRecord> records_;
};
