// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>

/// The most characters of a remark in a window that is as high as it needs.
inline constexpr qsizetype longestRemark = 1000;

/// A label of plain text that wraps between its words, and within one that is longer than a line:
/// whatever it says, the window may be as narrow as before.
class WrappingLabel final : public QLabel {
    Q_OBJECT

public:
    explicit WrappingLabel(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
