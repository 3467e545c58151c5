// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "exchange/LaneFlow.h"

#include <QWidget>

/// Draws where the first eight bytes go: the parts that come in above, those that go out below, and
/// a line for each byte. Bytes are read from left to right, whatever the language. Assistive
/// technology gets the same in words.
class LanePicture final : public QWidget {
    Q_OBJECT

public:
    explicit LanePicture(QWidget *parent = nullptr);

    /// Draws \a arrangement; the parts that come in or go out are called \a names.
    void setArrangement(const Arrangement &arrangement, const QStringList &names);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    LaneFlow flow_;
    QStringList names_;
};
