// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "imageviews/ImageComparison.h"

#include <QAction>
#include <QObject>

#include <functional>
#include <optional>

class GridView;
class ImageComparison;

/// Goes from one place that differs to the next, as two entries of a menu.
class DifferenceSteps final : public QObject {
    Q_OBJECT

public:
    /// Moves the cursor of \a grid to what \a comparison has found, and says with \a say what the
    /// move itself does not show; an empty sentence takes back what was said. All must outlive it.
    DifferenceSteps(GridView &grid, const ImageComparison &comparison,
                    std::function<void(const QString &sentence)> say, QObject *parent = nullptr);

    QAction *nextAction() { return &next_; }
    QAction *previousAction() { return &previous_; }

private:
    using Find = std::optional<qint64> (ImageComparison::*)(qint64 offset) const;

    void step(Find find, qint64 beyond, const QString &wrapped);
    QString whyNone() const;
    qint64 cursor() const;

    GridView &grid_;
    const ImageComparison &comparison_;
    std::function<void(const QString &)> say_;
    QAction next_;
    QAction previous_;
};
