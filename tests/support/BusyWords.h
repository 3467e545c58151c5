// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/BusyIndicator.h"

#include <QLabel>

/// What the part of \a busy that assistive technology calls \a name says: "Elapsed time", "Step" or
/// "Silence".
inline QString busyWords(const BusyIndicator &busy, const QString &name) {
    for (const auto *label : busy.findChildren<QLabel *>())
        if (label->accessibleName() == name)
            return label->text();
    return QStringLiteral("there is no such part");
}
