// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/PinLevels.h"

#include "language/LogicField.h"
#include "language/LogicReport.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

class LevelWords {
    Q_DECLARE_TR_FUNCTIONS(PinLevels)

public:
    static QStringList legend() {
        return {
            tr("0: driven low by the programmer"),
            tr("1: driven high by the programmer"),
            tr("L: low output expected"),
            tr("H: high output expected"),
            tr("C: clock pulse"),
            tr("Z: high impedance expected"),
            tr("X: ignored"),
            tr("G: ground"),
            tr("V: supply"),
        };
    }
};

PinState stateOf(PinLevel level) {
    if (level.failed)
        return PinState::Failed;
    const bool isExpected = level.letter == u'L' || level.letter == u'H' || level.letter == u'Z';
    return isExpected ? PinState::Good : PinState::Unchecked;
}

/// The number that \a text begins with or is; \a place if there is none.
int numberOf(const QString &text, qsizetype place) {
    const qsizetype colon = text.indexOf(u':');
    bool isNumber = false;
    const int number = text.left(colon < 0 ? text.size() : colon).toInt(&isNumber);
    return isNumber ? number : int(place);
}

QString column(const QString &text) {
    constexpr int width = 3;
    return text.leftJustified(width);
}

QString plainField(const QString &field) {
    const PinLevel level = pinLevel(field);
    const QString letter = level.letter.isNull() ? QStringLiteral("?") : QString(level.letter);
    return column(level.failed ? letter + u'-' : letter);
}

QString trimmedEnd(QString line) {
    while (line.endsWith(u' '))
        line.chop(1);
    return line;
}

} // namespace

int pinNumber(const LogicReport &report, qsizetype column) {
    const QStringList headers = report.headers.value_or(QStringList());
    return numberOf(headers.value(column), column + 1);
}

int vectorNumber(const LogicReport &report, qsizetype row) {
    return numberOf(report.rows[row].value(0), row);
}

QList<TestedPin> pinsInVector(const LogicReport &report, qsizetype row) {
    const QStringList &fields = report.rows[row];
    const qsizetype count = report.pinCount();
    QList<TestedPin> pins;
    for (qsizetype column = 0; column < count; ++column) {
        const PinLevel level = pinLevel(fields.value(column + 1));
        pins.append({pinNumber(report, column), level.letter, stateOf(level)});
    }
    return pins;
}

QList<TestedPin> worstOfPins(const LogicReport &report) {
    if (report.rows.isEmpty())
        return {};
    QList<TestedPin> worst = pinsInVector(report, 0);
    for (qsizetype row = 1; row < report.rows.size(); ++row) {
        const QList<TestedPin> pins = pinsInVector(report, row);
        for (qsizetype place = 0; place < pins.size(); ++place) {
            worst[place].state = std::max(worst[place].state, pins[place].state);
            if (worst[place].letter != pins[place].letter)
                worst[place].letter = QChar();
        }
    }
    return worst;
}

bool tellsOfPackage(const LogicReport &report) {
    const qsizetype pins = report.pinCount();
    return !report.rows.isEmpty() && pins >= minPins && pins <= maxPins && pins % 2 == 0;
}

QStringList levelLegend() {
    return LevelWords::legend();
}

QString plainTable(const LogicReport &report) {
    constexpr int digits = 4;
    const qsizetype pins = report.pinCount();
    QString header = QStringLiteral("      ");
    for (qsizetype pin = 0; pin < pins; ++pin)
        header += column(QString::number(pinNumber(report, pin)));
    QStringList lines = {trimmedEnd(header)};
    for (qsizetype row = 0; row < report.rows.size(); ++row) {
        const QStringList &fields = report.rows[row];
        QString line = QString::number(vectorNumber(report, row)).rightJustified(digits, u'0');
        line += QStringLiteral(": ");
        for (qsizetype field = 1; field <= pins && field < fields.size(); ++field)
            line += plainField(fields[field]);
        lines.append(trimmedEnd(line));
    }
    return lines.join(u'\n') + u'\n';
}
