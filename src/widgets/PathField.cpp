// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/PathField.h"

#include "widgets/PlainToolTip.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyleOptionFrame>
#include <QToolTip>

QRect PathField::textArea() const {
    constexpr int toolkitMargin = 2; // that the toolkit's own drawing keeps beside a text
    QStyleOptionFrame frame;
    initStyleOption(&frame);
    const QRect contents = style()->subElementRect(QStyle::SE_LineEditContents, &frame, this);
    return contents.adjusted(toolkitMargin, 0, -toolkitMargin, 0);
}

QString PathField::shownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, textArea().width());
}

void PathField::paintEvent(QPaintEvent *event) {
    const QString shown = shownText();
    if (hasFocus() || shown == text()) {
        QLineEdit::paintEvent(event);
        return;
    }
    QPainter painter(this);
    QStyleOptionFrame frame;
    initStyleOption(&frame);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &frame, &painter, this);
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Text));
    painter.drawText(textArea(),
                     int(Qt::AlignVCenter | Qt::TextSingleLine) |
                         int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)),
                     shown);
}

bool PathField::event(QEvent *event) {
    if (event->type() != QEvent::ToolTip || text().isEmpty())
        return QLineEdit::event(event);
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                       plainToolTip(toolTip() + u'\n' + text()), this);
    return true;
}
