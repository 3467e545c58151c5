// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/PinLevels.h"

#include <QStringList>

/// Every pin as its number, its letter if it has one, and "+" for good or "-" for failed.
inline QString pictureOf(const QList<TestedPin> &pins) {
    QStringList all;
    for (const TestedPin pin : pins) {
        QString text = QString::number(pin.number);
        if (!pin.letter.isNull())
            text += pin.letter;
        if (pin.state != PinState::Unchecked)
            text += pin.state == PinState::Good ? u'+' : u'-';
        all.append(text);
    }
    return all.join(u' ');
}
