// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/LogicReport.h"

#include "base/Log.h"
#include "base/TextLines.h"
#include "files/FileLoading.h"

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

Result<LogicReport> loadLogicReport(const QString &path, Log &log) {
    const Result<QString> text = loadUtf8Text(path);
    if (const Failure *failure = text.failure()) {
        log.write(QStringLiteral("error reading temp file: ") + failure->reason);
        return *failure;
    }
    log.write(QStringLiteral("we have successfully obtained the chip test results! %1 bytes")
                  .arg(text->size()));
    LogicReport report = parseLogicReport(*text);
    for (const QString &line : report.log)
        log.write(line);
    return report;
}
