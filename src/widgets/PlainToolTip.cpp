// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/PlainToolTip.h"

#include <QTextDocument>
#include <QWidget>

QString plainToolTip(const QString &text) {
    return text.isEmpty() ? text : Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
}

void setPlainToolTip(QWidget &widget, const QString &text) {
    widget.setToolTip(plainToolTip(text));
    widget.setAccessibleDescription(text);
}
