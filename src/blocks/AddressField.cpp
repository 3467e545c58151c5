// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "blocks/AddressField.h"

#include "image/BlockWords.h"
#include "image/TypedAddress.h"

#include <QCoreApplication>

#include <limits>

std::optional<qint64> typedOffset(const QString &text) {
    const auto typed = typedAddress(text);
    if (!typed || typed->from != TypedAddress::From::Start ||
        typed->distance > std::numeric_limits<quint32>::max())
        return std::nullopt;
    return qint64(typed->distance);
}

QString noByteWords(qint64 offset, qint64 imageSize) {
    return QCoreApplication::translate("Blocks", "There is no byte at %1: the last one is at %2.")
        .arg(addressWords(offset), addressWords(imageSize - 1));
}
