// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class GridView;
class QPainter;

/// What a grid says, below its rows, while its source has nothing to show.
class GridHint {
public:
    /// Says it in \a view, which owns it.
    explicit GridHint(GridView &view) : view_(view) {}

    void setText(const QString &text);
    /// The text while it is shown; empty otherwise.
    QString shown() const;
    /// Draws what is shown into the room that the rows leave.
    void paint(QPainter &painter) const;

private:
    GridView &view_;
    QString text_;
};
