#include "tool/PinFailures.h"

#include "tool/LogicReport.h"

#include <QCoreApplication>
#include <QMap>

#include <algorithm>

namespace {

/// The fields of a line that the grid has room for, its number aside.
constexpr qsizetype pinsInGrid = 17;

/// How many vectors of a pin are named; the others are counted.
constexpr qsizetype namedVectors = 3;

/// From so many failures on, only the pins are named.
constexpr qsizetype manyFailures = 24;

class PinWords {
    Q_DECLARE_TR_FUNCTIONS(PinFailures)

public:
    static QString pin(int number, const QList<int> &vectors);
    static QString pins(const QList<int> &numbers);
    static QString notShown(qsizetype pins) {
        return tr("The grid shows pins 1 to %1 of %2.")
            .arg(QString::number(pinsInGrid), QString::number(pins));
    }
    static QString sentence(const QString &list) { return tr("Failed: %1.").arg(list); }
    static QString counted(const QString &list, qsizetype failures) {
        return tr("Failed: %1, %2 fields in all.").arg(list, QString::number(failures));
    }
    static QString separator() { return tr(", "); }

private:
    static QStringList texts(const QList<int> &numbers);
    static QString joined(const QList<int> &numbers);
};

QStringList PinWords::texts(const QList<int> &numbers) {
    QStringList texts;
    for (const int number : numbers)
        texts.append(QString::number(number));
    return texts;
}

QString PinWords::joined(const QList<int> &numbers) {
    QStringList list = texts(numbers);
    if (list.size() == 1)
        return list.first();
    const QString last = list.takeLast();
    return tr("%1 and %2").arg(list.join(separator()), last);
}

QString PinWords::pin(int number, const QList<int> &vectors) {
    if (vectors.size() == 1)
        return tr("pin %1 in vector %2")
            .arg(QString::number(number), QString::number(vectors.first()));
    if (vectors.size() <= namedVectors)
        return tr("pin %1 in vectors %2").arg(QString::number(number), joined(vectors));
    return tr("pin %1 in vectors %2 and %3 more")
        .arg(QString::number(number), texts(vectors.first(namedVectors)).join(separator()),
             QString::number(vectors.size() - namedVectors));
}

QString PinWords::pins(const QList<int> &numbers) {
    return numbers.size() == 1 ? tr("pin %1").arg(joined(numbers))
                               : tr("pins %1").arg(joined(numbers));
}

/// A bad field is bright red, and a minus sign follows the expected level.
bool isMarkedBad(const QString &field) {
    return field.contains(QLatin1String("[0;91m")) ||
           (field.size() > 1 && field.endsWith(QLatin1Char('-')));
}

/// The number that \a text begins with or is; \a place if there is none.
int numberOf(const QString &text, qsizetype place) {
    const qsizetype colon = text.indexOf(QLatin1Char(':'));
    bool isNumber = false;
    const int number = text.left(colon < 0 ? text.size() : colon).toInt(&isNumber);
    return isNumber ? number : static_cast<int>(place);
}

} // namespace

QList<PinFailure> pinFailures(const LogicReport &report) {
    const QStringList headers = report.headers.value_or(QStringList());
    QList<PinFailure> failures;
    for (qsizetype row = 0; row < report.rows.size(); ++row) {
        const QStringList &fields = report.rows[row];
        const qsizetype count = std::min(fields.size(), headers.size() + 1);
        for (qsizetype field = 1; field < count; ++field)
            if (isMarkedBad(fields[field]))
                failures.append({numberOf(headers[field - 1], field), numberOf(fields[0], row)});
    }
    return failures;
}

QString wordsFor(const QList<PinFailure> &failures, qsizetype pins) {
    if (failures.isEmpty())
        return {};
    QMap<int, QList<int>> vectorsOfPin;
    for (const PinFailure failure : failures)
        vectorsOfPin[failure.pin].append(failure.vector);

    QString words;
    if (failures.size() >= manyFailures) {
        words = PinWords::counted(PinWords::pins(vectorsOfPin.keys()), failures.size());
    } else {
        QStringList list;
        for (auto pin = vectorsOfPin.cbegin(); pin != vectorsOfPin.cend(); ++pin)
            list.append(PinWords::pin(pin.key(), pin.value()));
        words = PinWords::sentence(list.join(PinWords::separator()));
    }
    return pins > pinsInGrid ? words + QLatin1Char(' ') + PinWords::notShown(pins) : words;
}
