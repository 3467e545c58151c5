// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "grid/GridMarks.h"

#include <QMap>

/// Marks as a test sets them.
struct MarksDouble final : public GridMarks {
    QMap<qint64, ByteMark> marks;

    ByteMark markAt(qint64 offset) const override { return marks.value(offset); }
    QString wordsAt(qint64 offset) const override {
        return marks.contains(offset) ? QStringLiteral("mark %1").arg(offset) : QString();
    }
};
