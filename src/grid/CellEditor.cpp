// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/CellEditor.h"

#include "base/Digits.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace {

bool areDigits(const QString &text, qsizetype count) {
    return text.size() == count && std::all_of(text.begin(), text.end(), [](QChar unit) {
               return digitValue(unit, hexadecimal).has_value();
           });
}

} // namespace

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

// Pasted digits do not end the entry: whoever pastes looks at the result.
void CellEditor::keyPressEvent(QKeyEvent *event) {
    QLineEdit::keyPressEvent(event);
    if (endsWithTwoDigits_ && areDigits(event->text(), 1) && areDigits(text(), 2))
        emit twoDigitsTyped();
}

void CellEditor::paintEvent(QPaintEvent *event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
