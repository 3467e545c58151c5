// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/CellEditor.h"

#include <QPainter>

#include <algorithm>

CellEditor::CellEditor(QWidget *parent) : QLineEdit(parent) {
    setFrame(false);
    setAutoFillBackground(true);
    connect(this, &QLineEdit::textChanged, this, &CellEditor::fitWidth);
}

void CellEditor::open(const QString &text) {
    setText(text);
    opened_ = text;
}

void CellEditor::setCommitted() {
    opened_ = text();
    committed_ = true;
    edit_.reset();
}

void CellEditor::placeAt(const QRect &cell) {
    cell_ = cell;
    fitWidth();
}

void CellEditor::fitWidth() {
    // Space for one more character than there are, and for the cursor.
    const QString widened = text() + u'M';
    constexpr int lineEditMargins = 8;
    const int wanted = fontMetrics().horizontalAdvance(widened) + lineEditMargins;
    const int available = parentWidget()->width() - cell_.left();
    const int width = std::max(cell_.width(), std::min(wanted, available));
    setGeometry(cell_.left(), cell_.top(), width, cell_.height());
}

void CellEditor::paintEvent(QPaintEvent *event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
