// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class QWidget;

/// Tells when a widget has painted itself since the last arm().
class PaintWatch final : public QObject {
public:
    /// \a widget must outlive the watch.
    explicit PaintWatch(QWidget &widget);

    void arm() { painted_ = false; }
    /// Lets the event loop turn until \a widget has painted and its pixels are on their way.
    /// Throws if that takes unreasonably long.
    void wait();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool painted_ = false;
};

/// Shows \a widget and lets the event loop turn until it is exposed and has painted.
void showPainted(QWidget &widget);
