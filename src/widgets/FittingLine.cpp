// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/FittingLine.h"

#include <QEvent>

FittingLine::FittingLine(QWidget *parent) : QLineEdit(parent) {
    setReadOnly(true);
    setFrame(false);
    QPalette seeThrough;
    seeThrough.setBrush(QPalette::Base, Qt::NoBrush);
    setPalette(seeThrough);
}

void FittingLine::say(const QString &whole) {
    whole_ = whole;
    showText();
}

void FittingLine::showText() {
    const QString fitting = fittingText();
    if (fitting == text())
        return;
    const bool wasSelected = hasFocus() && hasSelectedText() && selectedText() == text();
    setText(fitting);
    setCursorPosition(0);
    if (wasSelected)
        selectAll();
}

void FittingLine::resizeEvent(QResizeEvent *event) {
    QLineEdit::resizeEvent(event);
    showText();
}

void FittingLine::changeEvent(QEvent *event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        showText();
}
