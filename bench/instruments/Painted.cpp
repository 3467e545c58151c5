// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Painted.h"

#include "instruments/Stopwatch.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

#include <stdexcept>

namespace {

constexpr std::chrono::seconds patience(30);

} // namespace

PaintWatch::PaintWatch(QWidget &widget) {
    widget.installEventFilter(this);
}

void PaintWatch::wait() {
    const Stopwatch stopwatch;
    while (!painted_) {
        QCoreApplication::processEvents();
        if (stopwatch.isBeyond(patience))
            throw std::runtime_error("nothing was painted");
    }
}

bool PaintWatch::eventFilter(QObject *, QEvent *event) {
    if (event->type() == QEvent::Paint)
        painted_ = true;
    return false;
}

void showPainted(QWidget &widget) {
    PaintWatch watch(widget);
    widget.show();
    watch.wait();
    QCoreApplication::processEvents();
}
