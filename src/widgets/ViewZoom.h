// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractScrollArea>
#include <QObject>

/// Makes the letters of a view larger and smaller than it has them by itself: by Ctrl and the
/// wheel over it, and by call. In percent of the size that the view had at the beginning.
class ViewZoom final : public QObject {
    Q_OBJECT

public:
    static constexpr int usual = 100;
    static constexpr int smallest = 40;
    static constexpr int largest = 300;

    /// \a view must outlive it.
    explicit ViewZoom(QAbstractScrollArea &view, QObject *parent = nullptr);

    int percent() const { return percent_; }
    /// Takes the nearest percentage from smallest to largest.
    void setPercent(int percent);
    /// The next larger step, or smaller one; at the last there is none.
    void enlarge() { step(1); }
    void reduce() { step(-1); }

signals:
    void changed(int percent);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void step(int direction);
    void turnWheel(int angle);

    QAbstractScrollArea &view_;
    double points_; ///< that the view's letters had at the beginning
    int percent_ = usual;
    int turned_ = 0; ///< of the wheel, towards the next step
};
