// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QScrollArea>

/// A column of controls that scrolls up and down where it is too high, and is always as wide as
/// its controls and a scroll bar beside them: nothing is ever cut at its edge, and nothing moves
/// when the bar comes.
class ScrollColumn final : public QScrollArea {
    Q_OBJECT

public:
    explicit ScrollColumn(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// Follows what its controls need.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int neededWidth() const;
};
