// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/LogicReport.h"

#include "base/TextLines.h"

namespace {

bool isWhiteSpace(QChar character) {
    return character == u'\t' || character.category() == QChar::Separator_Space;
}

// White space within a line leaves empty strings behind wherever two separators meet.
QStringList fieldsOf(QStringView line) {
    QStringList fields(1);
    for (const QChar character : line) {
        if (isWhiteSpace(character))
            fields.append(QString());
        else
            fields.last().append(character);
    }
    return trimEmptyStrings(fields);
}

void parseLine(QStringView line, LogicReport &report) {
    if (line.contains(u"Logic test")) {
        report.log.append(QStringLiteral("parser found Logic test row - setting peeping_at"));
        report.title = line.toString();
    } else if (line.startsWith(u"      ")) {
        report.headers = fieldsOf(line);
    } else if (line.startsWith(u'0')) {
        report.rows.append(fieldsOf(line));
    }
}

} // namespace

LogicReport parseLogicReport(QStringView text) {
    LogicReport report;
    for (const QStringView line : linesOf(text))
        parseLine(line, report);
    return report;
}

QStringList trimEmptyStrings(const QStringList &strings) {
    QStringList kept;
    kept.reserve(strings.size());
    for (const QString &string : strings)
        if (!string.isEmpty())
            kept.append(string);
    return kept;
}
