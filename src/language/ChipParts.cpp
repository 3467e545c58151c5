// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/ChipParts.h"

#include <QStringList>

bool isCodeMemory(QStringView name) {
    return name.compare(u"code", Qt::CaseInsensitive) == 0;
}

bool isDataPart(QStringView name) {
    return name.compare(u"data", Qt::CaseInsensitive) == 0;
}

bool isUserPart(QStringView name) {
    return name.compare(u"user", Qt::CaseInsensitive) == 0;
}

bool isFusePart(QStringView name) {
    static const QStringList names = {QStringLiteral("config"), QStringLiteral("fuses"),
                                      QStringLiteral("fuse bits")};
    return names.contains(name, Qt::CaseInsensitive);
}

bool isCodePart(QStringView name) {
    static const QStringList others = {QStringLiteral("user id"), QStringLiteral("user ids"),
                                       QStringLiteral("lock bit"), QStringLiteral("lock bits")};
    return !isDataPart(name) && !isUserPart(name) && !isFusePart(name) &&
           !others.contains(name, Qt::CaseInsensitive);
}
