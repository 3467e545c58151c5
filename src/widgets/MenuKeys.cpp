// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/MenuKeys.h"

#include <QWidget>

QString keyWords(const QKeySequence &keys) {
    return keys.toString(QKeySequence::NativeText);
}

void nameKeysIn(QWidget &control, const QKeySequence &keys) {
    control.setToolTip(control.toolTip().arg(keyWords(keys)));
}
