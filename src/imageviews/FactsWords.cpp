// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/FactsWords.h"

#include "base/Digits.h"
#include "base/JoinedWords.h"
#include "base/NumberWords.h"
#include "base/ShownName.h"
#include "base/TimeWords.h"
#include "base/Units.h"
#include "base/VisibleText.h"
#include "image/AddressWords.h"
#include "image/BlockWords.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

constexpr int digitsOfSum = 4;
constexpr quint8 empty = 0x00;

class FactsWording {
    Q_DECLARE_TR_FUNCTIONS(FactsWords)
};

QString sourceWords(std::optional<CompositionSource> source, const QString &binaryPath,
                    OpenedFileWatch::State onDisk) {
    if (source == CompositionSource::ReadData)
        return FactsWording::tr("data read from chip");
    if (!source)
        return {};
    const QString name = QFileInfo(binaryPath).fileName();
    switch (onDisk) {
    case OpenedFileWatch::State::Changed:
        return FactsWording::tr("%1 (changed on the disk since)").arg(name);
    case OpenedFileWatch::State::Gone:
        return FactsWording::tr("%1 (no longer on the disk)").arg(name);
    case OpenedFileWatch::State::AsOpened:
        break;
    }
    return name;
}

} // namespace

QString readOriginWords(const QString &device, const QDateTime &when, const QDate &today) {
    return FactsWording::tr("%1, read at %2").arg(shownName(device), timeWords(when, today));
}

QString burnOriginWords(std::optional<CompositionSource> source, const QString &binaryPath,
                        OpenedFileWatch::State onDisk, int edits) {
    QStringList words = {sourceWords(source, binaryPath, onDisk)};
    if (edits > 0)
        words << (edits == 1 ? FactsWording::tr("with 1 edit")
                             : FactsWording::tr("with %1 edits").arg(grouped(edits)));
    return joinedWords(words, u", ");
}

QString checksumWords(const std::optional<ImageFacts> &facts) {
    const QString unknown = QStringLiteral("\u2026");
    return FactsWording::tr("CRC-32 %1, sum %2")
        .arg(facts ? crc32Digits(facts->crc32) : unknown,
             facts ? hexDigits(facts->sum, digitsOfSum) : unknown);
}

QString differenceWords(const std::optional<ImageDifferences> &differences, qint64 extraBytes) {
    const qint64 bytes = differences ? differences->bytes : 0;
    QStringList words = {!differences
                             ? FactsWording::tr("%1 differences").arg(QStringLiteral("\u2026"))
                         : bytes == 0 ? FactsWording::tr("no differences")
                         : bytes == 1 ? FactsWording::tr("1 difference")
                                      : FactsWording::tr("%1 differences").arg(grouped(bytes))};
    if (extraBytes > 0)
        words << FactsWording::tr("%1 longer").arg(sizeWords(extraBytes));
    if (extraBytes < 0)
        words << FactsWording::tr("%1 shorter").arg(sizeWords(-extraBytes));
    return words.join(QStringLiteral(", "));
}

QString erasureWords(const ImageDifferences &differences, bool isWhole) {
    const qint64 bits = differences.bitsToErase;
    if (bits > 0)
        return bits == 1 ? FactsWording::tr("needs erasing: 1 bit")
                         : FactsWording::tr("needs erasing: %1 bits").arg(grouped(bits));
    return differences.bytes > 0 && isWhole ? FactsWording::tr("can be burned on top") : QString();
}

QString blankRemark(const ImageFacts &facts, bool isRead) {
    if (facts.onlyByte != erasedByte && facts.onlyByte != empty)
        return {};
    const QString digits = hexDigits(*facts.onlyByte, hexDigitsInByte);
    return isRead ? FactsWording::tr("all 0x%1: blank, or no contact?").arg(digits)
                  : FactsWording::tr("all 0x%1").arg(digits);
}

QString byteWords(qint64 address, quint8 byte) {
    QStringList words = {
        QStringLiteral("0x") + hexDigits(byte, hexDigitsInByte), QString::number(byte),
        QStringLiteral("0b") + QString::number(byte, binaryBase).rightJustified(bitsInByte, u'0')};
    if (const QChar character(char16_t{byte}); byte != u' ' && isPrintableAscii(character))
        words << QStringLiteral("\u201c%1\u201d").arg(character);
    return FactsWording::tr("at %1: %2")
        .arg(addressWords(address), words.join(QStringLiteral(", ")));
}

QString blockWords(ByteRange block, const std::optional<ImageFacts> &facts) {
    return FactsWording::tr("selected from %1 to %2: %3, %4")
        .arg(addressWords(block.offset), addressWords(block.end() - 1), sizeWords(block.length),
             checksumWords(facts));
}
