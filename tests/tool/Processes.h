// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>
#include <QString>

/// No such process, or nothing but its entry waiting for an unhurried parent.
inline bool isGone(const QString &pid) {
    QFile facts(QStringLiteral("/proc/%1/stat").arg(pid));
    return !facts.open(QIODevice::ReadOnly) || facts.readAll().contains(") Z ");
}
