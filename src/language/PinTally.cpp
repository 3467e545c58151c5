// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/PinTally.h"

#include <QCoreApplication>

#include <set>

namespace {

/// How many pins the summary has sentences for.
constexpr qsizetype maxNamedPins = 3;

class TallyWords {
    Q_DECLARE_TR_FUNCTIONS(PinTally)

public:
    static QString ofPin(int pin, int failed, int runs) {
        const QString number = QString::number(pin);
        const QString all = QString::number(runs);
        if (failed < runs)
            return tr("Pin %1 failed in %2 of %3 runs: flaky, or a bad contact")
                .arg(number, QString::number(failed), all);
        return runs == 1 ? tr("Pin %1 failed").arg(number)
                         : tr("Pin %1 failed in all %2 runs").arg(number, all);
    }
    static QString noPin(int runs) {
        return runs == 1 ? noPinFailedWords()
                         : tr("No pin failed in %1 runs").arg(QString::number(runs));
    }
    static QString morePins(qsizetype pins) {
        return pins == 1 ? tr("One more pin failed") : tr("%1 more pins failed").arg(pins);
    }
};

} // namespace

QString noPinFailedWords() {
    return QCoreApplication::translate("PinTally", "No pin failed");
}

void PinTally::add(const QList<PinFailure> &failures) {
    ++runs_;
    std::set<int> pins;
    std::set<std::pair<int, int>> fields;
    for (const PinFailure failure : failures) {
        if (pins.insert(failure.pin).second)
            ++pins_[failure.pin];
        const std::pair place(failure.vector, failure.pin);
        if (!fields.insert(place).second)
            continue;
        Field &field = fields_[place];
        ++field.runs;
        field.expected = failure.expected;
    }
}

QList<PinFailure> PinTally::failures() const {
    QList<PinFailure> failures;
    for (const auto &[place, field] : fields_.asKeyValueRange())
        failures.append({place.second, place.first, field.expected});
    return failures;
}

QMap<int, int> PinTally::failedRuns(std::optional<int> vector) const {
    if (!vector)
        return pins_;
    QMap<int, int> pins;
    for (const auto &[place, field] : fields_.asKeyValueRange())
        if (place.first == *vector)
            pins.insert(place.second, field.runs);
    return pins;
}

QStringList PinTally::sentences(std::optional<int> vector) const {
    QStringList sentences;
    const QMap<int, int> pins = failedRuns(vector);
    for (const auto &[pin, failed] : pins.asKeyValueRange())
        sentences.append(TallyWords::ofPin(pin, failed, runs_));
    return sentences;
}

QString PinTally::summary() const {
    if (runs_ == 0)
        return {};
    QStringList named = sentences();
    const qsizetype more = named.size() - maxNamedPins;
    if (named.isEmpty())
        named.append(TallyWords::noPin(runs_));
    if (more > 0)
        named = named.first(maxNamedPins) << TallyWords::morePins(more);
    return named.join(QStringLiteral(". ")) + u'.';
}
