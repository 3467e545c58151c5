// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/PinFailures.h"

#include "base/JoinedWords.h"
#include "language/LogicField.h"
#include "language/LogicReport.h"
#include "language/PinLevels.h"
#include "language/Sentences.h"

#include <QCoreApplication>
#include <QMap>

#include <algorithm>
#include <set>

namespace {

/// Of a pin that failed here and there in more vectors, the first ones are named and the others
/// counted.
constexpr qsizetype maxNamedVectors = 12;

class PinWords {
    Q_DECLARE_TR_FUNCTIONS(PinFailures)

public:
    /// "pins 2 and 3 in vectors 0 to 5 and 7"; both lists hold ascending numbers, at least one. Of
    /// many vectors only the first are named.
    static QString failed(const QList<int> &pins, const QList<int> &vectors);
    static QString sentence(const QStringList &list) {
        return tr("Failed: %1.").arg(list.join(tr("; ")));
    }
    /// "vector 3: low expected"; \a vectors holds ascending numbers, at least one.
    static QString expected(const QList<int> &vectors, QChar letter);
    static QString ofPin(int pin, const QStringList &list) {
        return tr("Pin %1, %2").arg(QString::number(pin), list.join(tr("; ")));
    }
    /// The same for those that end a sentence.
    static QString andMorePins(qsizetype pins) {
        return pins == 1 ? tr("and one more pin") : tr("and %1 more pins").arg(pins);
    }
    static QString morePins(qsizetype pins) {
        return pins == 1 ? tr("And one more pin") : tr("And %1 more pins").arg(pins);
    }
    static QString notShown() {
        return tr("The table has room for pins 1 to %1 only.").arg(QString::number(pinsInGrid));
    }

private:
    static QStringList runsOf(const QList<int> &numbers);
    static QString joinedNumbers(const QList<int> &numbers);
    static QString beginningOf(const QList<int> &numbers);
    static QString levelName(QChar letter);
};

// The runs of \a numbers as texts. A pair is no run.
QStringList PinWords::runsOf(const QList<int> &numbers) {
    QStringList texts;
    for (qsizetype first = 0; first < numbers.size();) {
        qsizetype last = first;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1)
            ++last;
        if (last == first + 1)
            last = first;
        const QString number = QString::number(numbers[first]);
        texts.append(last == first ? number
                                   : tr("%1 to %2").arg(number, QString::number(numbers[last])));
        first = last + 1;
    }
    return texts;
}

QString PinWords::joinedNumbers(const QList<int> &numbers) {
    return listWords(runsOf(numbers));
}

QString PinWords::failed(const QList<int> &pins, const QList<int> &vectors) {
    const QString pinWords = pins.size() == 1 ? tr("pin %1").arg(joinedNumbers(pins))
                                              : tr("pins %1").arg(joinedNumbers(pins));
    return vectors.size() == 1 ? tr("%1 in vector %2").arg(pinWords, joinedNumbers(vectors))
                               : tr("%1 in vectors %2").arg(pinWords, beginningOf(vectors));
}

QString PinWords::beginningOf(const QList<int> &numbers) {
    if (runsOf(numbers).size() <= maxNamedVectors)
        return joinedNumbers(numbers);
    return tr("%1 and %2 more")
        .arg(runsOf(numbers.first(maxNamedVectors)).join(tr(", ")),
             QString::number(numbers.size() - maxNamedVectors));
}

QString PinWords::levelName(QChar letter) {
    if (letter == u'L')
        return tr("low");
    if (letter == u'H')
        return tr("high");
    return letter == u'Z' ? tr("high impedance") : QString(letter);
}

QString PinWords::expected(const QList<int> &vectors, QChar letter) {
    const QString where = vectors.size() == 1 ? tr("vector %1").arg(joinedNumbers(vectors))
                                              : tr("vectors %1").arg(beginningOf(vectors));
    return letter.isNull() ? where : tr("%1: %2 expected").arg(where, levelName(letter));
}

/// The failures of one pin: the vectors of each level that was expected.
using VectorsOfLetter = QMap<QChar, std::set<int>>;

QString sentenceFor(int pin, const VectorsOfLetter &failures) {
    // The level that was missed first comes first.
    QMultiMap<int, QString> list;
    for (const auto &[letter, vectors] : failures.asKeyValueRange())
        list.insert(*vectors.begin(), PinWords::expected({vectors.begin(), vectors.end()}, letter));
    return PinWords::ofPin(pin, list.values());
}

} // namespace

QList<PinFailure> pinFailures(const LogicReport &report) {
    const qsizetype pins = report.pinCount();
    QList<PinFailure> failures;
    for (qsizetype row = 0; row < report.rows.size(); ++row) {
        const QStringList &fields = report.rows[row];
        const qsizetype count = std::min(fields.size(), pins + 1);
        for (qsizetype field = 1; field < count; ++field)
            if (const PinLevel level = pinLevel(fields[field]); level.failed)
                failures.append(
                    {pinNumber(report, field - 1), vectorNumber(report, row), level.letter});
    }
    return failures;
}

QString wordsFor(const QList<PinFailure> &failures, qsizetype pins) {
    if (failures.isEmpty())
        return {};
    QMap<int, std::set<int>> vectorsOfPin;
    for (const PinFailure failure : failures)
        vectorsOfPin[failure.pin].insert(failure.vector);
    QStringList list;
    for (qsizetype named = 0; named < maxPins && !vectorsOfPin.isEmpty();) {
        const std::set<int> vectors = vectorsOfPin.first();
        QList<int> alike = vectorsOfPin.keys(vectors);
        alike.resize(std::min(alike.size(), maxPins - named));
        list.append(PinWords::failed(alike, {vectors.begin(), vectors.end()}));
        for (const int pin : alike)
            vectorsOfPin.remove(pin);
        named += alike.size();
    }
    if (!vectorsOfPin.isEmpty())
        list.append(PinWords::andMorePins(vectorsOfPin.size()));
    const QString words = PinWords::sentence(list);
    return joinedSentences(words, pins > pinsInGrid ? PinWords::notShown() : QString());
}

QStringList sentencesFor(const QList<PinFailure> &failures) {
    QMap<int, VectorsOfLetter> pins;
    for (const PinFailure failure : failures)
        pins[failure.pin][failure.expected].insert(failure.vector);
    QStringList sentences;
    for (const auto &[pin, ofPin] : pins.asKeyValueRange()) {
        if (sentences.size() == maxPins)
            return sentences << PinWords::morePins(pins.size() - maxPins);
        sentences.append(sentenceFor(pin, ofPin));
    }
    return sentences;
}
