// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/ChipErasure.h"

#include <QRegularExpression>

bool losesBitsOnly(const QString &device) {
    // Winbond's W27 and the SuperFlash SF and VF families are erased electrically, HY27 is NAND.
    static const QRegularExpression name(
        QStringLiteral("^(?!W27|HY27[A-Z]F)([A-Z]{0,4}|M5M)27(C|H|HC|L|LC|LV|P|PC|V|W)?[0-9]{2,6}"
                       "[A-Z]*(@|\\(|$)"),
        QRegularExpression::CaseInsensitiveOption);
    return name.match(device).hasMatch();
}
