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
    m_opened = text;
}

void CellEditor::setCommitted() {
    m_opened = text();
    m_committed = true;
}

void CellEditor::placeAt(const QRect &cell) {
    m_cell = cell;
    fitWidth();
}

void CellEditor::fitWidth() {
    // Space for one more character than there are, and for the cursor.
    const QString widened = text() + u'M';
    constexpr int lineEditMargins = 8;
    const int wanted = fontMetrics().horizontalAdvance(widened) + lineEditMargins;
    const int available = parentWidget()->width() - m_cell.left();
    const int width = std::max(m_cell.width(), std::min(wanted, available));
    setGeometry(m_cell.left(), m_cell.top(), width, m_cell.height());
}

void CellEditor::paintEvent(QPaintEvent *event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
