// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/ScrollColumn.h"

#include <QEvent>
#include <QScrollBar>

ScrollColumn::ScrollColumn(QWidget *parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
}

int ScrollColumn::neededWidth() const {
    const int controls = widget() ? widget()->minimumSizeHint().width() : 0;
    return controls + verticalScrollBar()->sizeHint().width();
}

QSize ScrollColumn::sizeHint() const {
    return {neededWidth(), QScrollArea::sizeHint().height()};
}

QSize ScrollColumn::minimumSizeHint() const {
    return {neededWidth(), QScrollArea::minimumSizeHint().height()};
}

bool ScrollColumn::eventFilter(QObject *watched, QEvent *event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}
