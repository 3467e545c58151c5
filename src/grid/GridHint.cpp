// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridHint.h"

#include "grid/GridView.h"

#include <QGuiApplication>
#include <QPainter>

void GridHint::setText(const QString &text) {
    text_ = text;
    view_.viewport()->update();
}

QString GridHint::shown() const {
    const GridModel *model = view_.gridModel();
    return model && model->isBlank() ? text_ : QString();
}

void GridHint::paint(QPainter &painter) const {
    const int margin = view_.rowHeight();
    const int top = view_.gridModel()->rowCount() * view_.rowHeight();
    const QRect room = view_.viewport()->rect().adjusted(margin, top, -margin, 0);
    // Family and size are set: what a font leaves open, the painter takes from the grid's fixed
    // one.
    QFont words = QGuiApplication::font();
    words.setFamily(words.family());
    words.setPointSizeF(words.pointSizeF());
    painter.setFont(words);
    painter.setPen(view_.palette().color(QPalette::Text));
    painter.drawText(room, int(Qt::AlignCenter) | int(Qt::TextWordWrap), shown());
}
