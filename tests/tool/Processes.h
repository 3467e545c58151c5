// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/FileHelpers.h"

#include <QString>

/// No such process, or nothing but its entry waiting for an unhurried parent.
inline bool isGone(const QString &pid) {
    const QByteArray facts = readWholeFile(QStringLiteral("/proc/%1/stat").arg(pid));
    return facts.isNull() || facts.contains(") Z ");
}
