// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/PlainToolTip.h"

#include "base/BoundedText.h"

#include <QWidget>

QString plainToolTip(const QString &text) {
    static const QString asItStands = QStringLiteral("<p style='white-space:pre-wrap'>%1</p>");
    return text.isEmpty() ? text : asItStands.arg(boundedText(text, longestTip).toHtmlEscaped());
}

void setPlainToolTip(QWidget &widget, const QString &text) {
    widget.setToolTip(plainToolTip(text));
    widget.setAccessibleDescription(boundedText(text, longestTip));
}
