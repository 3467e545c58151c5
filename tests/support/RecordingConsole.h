// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tool/Console.h"

#include <QStringList>

/// A console that keeps what it is told, for a test to look at.
class RecordingConsole final : public Console {
public:
    void appendText(const QString &text) override {
        pieces.append(text);
        events.append(text);
    }
    void beginRun() override { events.append(QStringLiteral("<begin>")); }
    void endRun() override { events.append(QStringLiteral("<end>")); }

    /// The text storage: all pieces, one behind the other.
    QString text() const { return pieces.join(QString()); }

    /// The appended texts alone, and the same with the beginning and the end of each run.
    QStringList pieces;
    QStringList events;
};
