// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/LogicReport.h"

#include "base/Log.h"
#include "base/NumberWords.h"
#include "base/Units.h"
#include "files/FileLoading.h"
#include "files/LoggedLoading.h"
#include "files/TextLines.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cerrno>

namespace {

bool isWhiteSpace(QChar character) {
    return character == u' ' || character == u'\t' ||
           (character > u'\x7f' && character.category() == QChar::Separator_Space);
}

/// Nearly every field is a single level: those share their characters, one set for all reports.
QString fieldOf(QStringView text) {
    static const auto levels = [] {
        std::array<QString, 128> all;
        for (size_t unit = 0; unit < all.size(); ++unit)
            all[unit] = QChar(char16_t(unit));
        return all;
    }();
    const bool isLevel = text.size() == 1 && text.front() < QChar(char16_t(levels.size()));
    return isLevel ? levels[text.front().unicode()] : text.toString();
}

/// Calls \a take with each field of \a line, in order.
template <typename Take>
void forEachField(QStringView line, const Take &take) {
    auto begin = line.begin();
    while (true) {
        begin = std::find_if_not(begin, line.end(), isWhiteSpace);
        if (begin == line.end())
            return;
        const auto end = std::find_if(begin, line.end(), isWhiteSpace);
        take(QStringView(begin, end));
        begin = end;
    }
}

/// Counted first, so that a row takes no more memory than its fields.
QStringList fieldsOf(QStringView line) {
    qsizetype count = 0;
    forEachField(line, [&](QStringView) { ++count; });
    QStringList fields;
    fields.reserve(count);
    forEachField(line, [&](QStringView field) { fields.append(fieldOf(field)); });
    return fields;
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

/// \a text if all its lines can be shown: the window lays out a line as a whole.
Result<QString> withoutLongLines(Result<QString> text) {
    if (!text)
        return text;
    LineCursor lines(*text);
    while (const auto line = lines.next())
        if (line->size() > longestReportLine)
            return Failure{
                QCoreApplication::translate("LogicReport", "A line of more than %1 characters")
                    .arg(grouped(longestReportLine))};
    return text;
}

} // namespace

LogicReport parseLogicReport(QStringView text) {
    LogicReport report;
    LineCursor lines(text);
    while (const auto line = lines.next())
        parseLine(*line, report);
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
    const Result<QString> text = orLogged(withoutLongLines(loadUtf8Text(path, largestReport)), log);
    if (const Failure *failure = text.failure())
        return *failure;
    log.write(QStringLiteral("we have successfully obtained the chip test results! %1 bytes")
                  .arg(text->size()));
    LogicReport report = parseLogicReport(*text);
    for (const QString &line : report.log)
        log.write(line);
    return report;
}

QString wordsForUnreadReport(const Failure &failure) {
    if (failure.systemError == ENOENT)
        return {};
    if (failure.systemError == EFBIG)
        return QCoreApplication::translate("LogicReport",
                                           "Its report is larger than %1 MiB and is not shown.")
            .arg(largestReport / mebibyte);
    return QCoreApplication::translate("LogicReport", "Its report could not be read: %1.")
        .arg(failure.reason);
}

QString wordsForCutReport(const Failure &failure) {
    return QCoreApplication::translate("LogicReport",
                                       "Its report is not whole, it could not be written: %1.")
        .arg(failure.reason);
}
