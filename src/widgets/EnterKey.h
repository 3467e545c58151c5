// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QKeyEvent>

/// True if \a key is Return, or Enter on the number pad.
inline bool isEnter(const QKeyEvent &key) {
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}
