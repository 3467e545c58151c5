// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/PlainToolTip.h"

#include <QTextDocument>
#include <QWidget>

void setPlainToolTip(QWidget &widget, const QString &text) {
    widget.setToolTip(Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal));
    widget.setAccessibleDescription(text);
}
