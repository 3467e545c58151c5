// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/WrappingLabel.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace {

/// That a line has where there is room for it.
constexpr int usualLetters = 80;

/// Gives \a document the text of \a label as it stands in lines of \a width.
void layOut(QTextDocument &document, const QLabel &label, int width) {
    QTextOption option(label.alignment());
    option.setTextDirection(label.layoutDirection());
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document.setDefaultTextOption(option);
    document.setDefaultFont(label.font());
    document.setDocumentMargin(0);
    document.setPlainText(label.text());
    document.setTextWidth(width);
}

int heightOf(const QTextDocument &document) {
    return int(std::ceil(document.size().height()));
}

} // namespace

WrappingLabel::WrappingLabel(QWidget *parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

QSize WrappingLabel::sizeHint() const {
    const int width =
        std::min(QLabel::sizeHint().width(), usualLetters * fontMetrics().averageCharWidth());
    return {width, heightForWidth(width)};
}

// The toolkit's label is never narrower than its longest word.
QSize WrappingLabel::minimumSizeHint() const {
    return {1, QLabel::minimumSizeHint().height()};
}

int WrappingLabel::heightForWidth(int width) const {
    const QMargins around = contentsMargins();
    QTextDocument document;
    layOut(document, *this, width - around.left() - around.right());
    return heightOf(document) + around.top() + around.bottom();
}

void WrappingLabel::paintEvent(QPaintEvent *) {
    const QRect room = contentsRect();
    QTextDocument document;
    layOut(document, *this, room.width());
    const QSize size(room.width(), heightOf(document));
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, palette().color(foregroundRole()));
    QPainter painter(this);
    painter.translate(QStyle::alignedRect(layoutDirection(), alignment(), size, room).topLeft());
    document.documentLayout()->draw(&painter, context);
}
