// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/OrderWords.h"

#include "base/NumberWords.h"
#include "base/ShownName.h"
#include "base/Units.h"
#include "exchange/FileFormats.h"
#include "files/ByteBuffer.h"
#include "image/BlockWords.h"
#include "inspect/ImageFacts.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

class OrderWording {
    Q_DECLARE_TR_FUNCTIONS(OrderWords)
};

/// The usual EPROM of so many bytes; empty if there is none.
QString usualEprom(qint64 bytes, int unit) {
    struct Eprom {
        int kib;
        const char *name;
    };
    static constexpr Eprom narrow[] = {
        {2, "2716"},    {4, "2732"},     {8, "27C64"},    {16, "27C128"},  {32, "27C256"},
        {64, "27C512"}, {128, "27C010"}, {256, "27C020"}, {512, "27C040"}, {1024, "27C080"}};
    static constexpr Eprom wide[] = {{128, "27C1024"}, {256, "27C2048"}, {512, "27C4096"}};
    const auto nameIn = [bytes](const auto &eproms) {
        for (const Eprom &eprom : eproms)
            if (eprom.kib * kibibyte == bytes)
                return QString::fromLatin1(eprom.name);
        return QString();
    };
    return unit == 1 ? nameIn(narrow) : nameIn(wide);
}

/// On which data lines of the system a part is.
QString linesWords(const LabelledPart &part) {
    const int last = part.lanes.parts - 1;
    const int height = part.lowByteLast ? last - part.part : part.part;
    if (last == 1 && part.lanes.unit == 1)
        return height == 0 ? OrderWording::tr("low byte") : OrderWording::tr("high byte");
    const int width = part.lanes.unit * bitsInByte;
    return OrderWording::tr("D%1 to D%2")
        .arg(QString::number(height * width), QString::number((height + 1) * width - 1));
}

QString lengthsWords(const QList<qint64> &lengths) {
    QStringList words;
    for (const qint64 length : lengths)
        words << grouped(length);
    return words.join(QStringLiteral(", "));
}

QString missingWords(int wanted, qsizetype there) {
    const QString sentence = there < wanted ? OrderWording::tr("Parts: %1 of %2. Add the others.")
                                            : OrderWording::tr("Parts: %1 for %2. Remove some.");
    return sentence.arg(QString::number(there), QString::number(wanted));
}

QString groupsWords(int group, qint64 length) {
    return OrderWording::tr("Bytes can be swapped in groups of %1 only; %2 make no whole groups.")
        .arg(QString::number(group), grouped(length));
}

QString equalPartsWords(const Lanes &split, qint64 length) {
    return OrderWording::tr("%1 bytes cannot be split into %2 parts of the same length.")
        .arg(grouped(length), QString::number(split.parts));
}

} // namespace

QString partName(const Lanes &lanes, int part) {
    if (lanes != Lanes{2, 1})
        return QString::number(part);
    return part == 0 ? QStringLiteral("even") : QStringLiteral("odd");
}

QStringList partNames(const Lanes &lanes) {
    QStringList names;
    for (int part = 0; part < lanes.parts; ++part)
        names << partName(lanes, part);
    return names;
}

QString withoutEnding(const QString &path) {
    const QString ending = QFileInfo(path).suffix();
    const auto formats = fileFormats();
    const bool isKnown = std::any_of(formats.begin(), formats.end(), [&](const FileFormat &format) {
        return format.ending.compare(ending, Qt::CaseInsensitive) == 0;
    });
    return isKnown ? path.chopped(ending.size() + 1) : path;
}

QString partPath(const QString &path, const Lanes &lanes, int part, const QString &extension) {
    return withoutEnding(path) + u'.' + partName(lanes, part) + u'.' + extension;
}

QString wholeName(const QString &partName) {
    static const QRegularExpression ending(QStringLiteral("[-_. ](even|odd|low|high|lo|hi|[0-3])$"),
                                           QRegularExpression::CaseInsensitiveOption);
    const qsizetype at = partName.indexOf(ending);
    return at > 0 ? partName.first(at) : partName;
}

QString chipSizeWords(qint64 bytes) {
    if (bytes % kibibyte != 0 || bytes == 0)
        return sizeWords(bytes);
    return OrderWording::tr("%1 KiB").arg(grouped(bytes / kibibyte));
}

QString labelWords(const LabelledPart &part, const ChipSize &chip) {
    const QString name = shownName(part.name);
    QStringList words;
    if (part.lanes.parts == 1)
        words << name;
    else
        words << name + u' ' + partName(part.lanes, part.part) << linesWords(part);
    words << OrderWording::tr("CRC-32 %1").arg(crc32Digits(part.crc32));
    const QString type =
        chip.bytes == part.length ? shownName(chip.name) : usualEprom(part.length, part.lanes.unit);
    words << (type.isEmpty() ? QString() : type + u' ') + chipSizeWords(part.length);
    return words.join(QStringLiteral(", "));
}

QString inOrderWords(qint64 length, quint32 crc32) {
    return OrderWording::tr("In this order: %1, CRC-32 %2")
        .arg(sizeWords(length), crc32Digits(crc32));
}

QString whyNotWords(NoArrangement why, const Arrangement &arrangement,
                    const QList<qint64> &lengths) {
    const qint64 length = splitLength(arrangement, lengths);
    const qint64 whole = wholeLength(lengths);
    switch (why) {
    case NoArrangement::PartsMissing:
        return missingWords(arrangement.joined.parts, lengths.size());
    case NoArrangement::DifferentLengths:
        return OrderWording::tr(
                   "The parts have different lengths (%1 bytes), so nothing can be joined.")
            .arg(lengthsWords(lengths));
    case NoArrangement::NoWholeUnits:
        return OrderWording::tr("A part of %1 bytes makes no whole units of 16 bits.")
            .arg(grouped(lengths.value(0)));
    case NoArrangement::NoWholeGroups:
        return groupsWords(arrangement.swapped, whole);
    case NoArrangement::NoEqualParts:
        return equalPartsWords(arrangement.split, whole);
    case NoArrangement::NoWholeRepeats:
        return OrderWording::tr("%1 cannot be repeated to fill just %2.")
            .arg(sizeWords(length), chipSizeWords(arrangement.filled));
    case NoArrangement::TooLarge:
        return OrderWording::tr("It would be more than %1.").arg(boundWords(largestImage));
    }
    return {};
}
