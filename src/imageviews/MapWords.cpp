// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/MapWords.h"

#include "image/AddressWords.h"

#include <QCoreApplication>

#include <optional>

namespace {

class MapWording {
    Q_DECLARE_TR_FUNCTIONS(MapWords)
};

QString classWords(BlockClass looks) {
    switch (looks) {
    case BlockClass::Blank:
        return MapWording::tr("blank");
    case BlockClass::Zero:
        return MapWording::tr("zeros");
    case BlockClass::Text:
        return MapWording::tr("text");
    case BlockClass::Code:
        break;
    }
    return MapWording::tr("code or data");
}

QString hexText(qint64 value) {
    return QStringLiteral("0x") + addressWords(value);
}

/// What a part looks like; empty while that is not known.
QString lookWords(std::optional<BlockClass> looks, bool differs) {
    QStringList words;
    if (looks)
        words.append(classWords(*looks));
    if (differs)
        words.append(MapWording::tr("differs"));
    return words.join(QStringLiteral(", "));
}

} // namespace

QString positionWords(qint64 offset, qint64 size, const MapCell &cell) {
    const QString place = MapWording::tr("%1 of %2").arg(hexText(offset), hexText(size));
    const QString looks = lookWords(cell.looks, cell.differs);
    return looks.isEmpty() ? place : MapWording::tr("%1, %2").arg(place, looks);
}

QString cellWords(const MapCell &cell) {
    const QString place =
        MapWording::tr("%1 to %2").arg(hexText(cell.first), hexText(cell.end - 1));
    const QString looks = lookWords(cell.looks, cell.differs);
    return looks.isEmpty() ? place : MapWording::tr("%1: %2").arg(place, looks);
}
