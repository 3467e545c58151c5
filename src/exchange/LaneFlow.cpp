// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/LaneFlow.h"

#include "orders/Rearranging.h"

#include <QCoreApplication>

#include <numeric>
#include <utility>

namespace {

class LaneWording {
    Q_DECLARE_TR_FUNCTIONS(LaneFlow)
};

QList<int> numbersOf(QByteArrayView bytes) {
    return {bytes.begin(), bytes.end()};
}

QString bytesWords(const LaneFlow &flow, const QList<int> &bytes) {
    QStringList words;
    for (const int byte : bytes)
        words << byteName(flow, byte);
    return words.join(u' ');
}

/// A piece of a sentence for each part: which bytes it has.
QString partsWords(const LaneFlow &flow, const QList<QList<int>> &parts, const QStringList &names) {
    QStringList words;
    for (qsizetype part = 0; part < parts.size(); ++part)
        words << LaneWording::tr("%1 has %2").arg(names.value(part), bytesWords(flow, parts[part]));
    return words.join(QStringLiteral("; "));
}

} // namespace

LaneFlow flowOf(const Arrangement &arrangement) {
    QByteArray bytes(shownBytes, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    QList<QByteArrayView> parts;
    const qsizetype length = shownBytes / arrangement.joined.parts;
    for (int part = 0; part < arrangement.joined.parts; ++part)
        parts.append(QByteArrayView(bytes).sliced(part * length, length));
    // The bits of a byte and its repeats are where the byte is.
    Arrangement places = arrangement;
    places.bitsReversed = false;
    places.filled = 0;
    LaneFlow flow;
    for (const QByteArrayView part : std::as_const(parts))
        flow.from.append(numbersOf(part));
    for (const QByteArray &part : rearranged(places, parts))
        flow.to.append(numbersOf(part));
    return flow;
}

QString byteName(const LaneFlow &flow, int byte) {
    if (flow.from.size() == 1)
        return QString::number(byte);
    const qsizetype length = flow.from.first().size();
    return QChar(u'A' + char16_t(byte / length)) + QString::number(byte % length);
}

QString flowWords(const Arrangement &arrangement, const QStringList &names) {
    const LaneFlow flow = flowOf(arrangement);
    QStringList words;
    if (flow.from.size() > 1)
        words << LaneWording::tr("Of the parts, %1.").arg(partsWords(flow, flow.from, names));
    else
        words << LaneWording::tr("The image begins with the bytes %1.")
                     .arg(bytesWords(flow, flow.from.first()));
    if (flow.to.size() > 1)
        words << LaneWording::tr("Of the parts, %1.").arg(partsWords(flow, flow.to, names));
    else
        words << LaneWording::tr("They become %1.").arg(bytesWords(flow, flow.to.first()));
    if (arrangement.bitsReversed)
        words << LaneWording::tr("The bits of each byte are turned round.");
    if (arrangement.filled > 0)
        words << LaneWording::tr("All of it is repeated until the chip is full.");
    return words.join(u' ');
}
