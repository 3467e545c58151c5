// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/TerminalText.h"

#include <QStringList>

#include <algorithm>

/// What a view of a terminal's text shows when it does nothing but apply the updates.
class Screen {
public:
    void apply(const TerminalUpdate &update) {
        const bool fromStart = update.linesBack >= lines_.size();
        const qsizetype line = fromStart ? 0 : lines_.size() - 1 - update.linesBack;
        const QString kept = fromStart ? QString() : lines_[line].first(update.column);
        lines_.erase(lines_.begin() + line, lines_.end());
        lines_ += (kept + update.text).split(u'\n');
    }

    QString text() const { return lines_.join(u'\n'); }

private:
    QStringList lines_{QString()};
};
