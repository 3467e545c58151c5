// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "language/LogicReport.h"
#include "language/PinFailures.h"
#include "language/PinLevels.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

// A report is read line by line: no field is empty, nothing is made up, and what is said of bad
// pins is said exactly if there are some.

namespace {

bool hasEmpty(const QStringList &fields) {
    return std::any_of(fields.begin(), fields.end(),
                       [](const QString &field) { return field.isEmpty(); });
}

void checkFields(const LogicReport &report) {
    mustHold(!report.title || report.title->contains(u"Logic test"), "a title names the test");
    mustHold(report.log.isEmpty() == !report.title, "each title is logged");
    mustHold(!report.headers || !hasEmpty(*report.headers), "no header is empty");
    for (const QStringList &row : report.rows)
        mustHold(!row.isEmpty() && row.first().startsWith(u'0') && !hasEmpty(row),
                 "a row begins with its number, and no field is empty");
}

void checkFailures(const LogicReport &report) {
    const QList<PinFailure> failures = pinFailures(report);
    qsizetype fields = 0;
    for (const QStringList &row : report.rows)
        fields += row.size() - 1;
    mustHold(failures.size() <= fields, "a field fails once");
    mustHold(wordsFor(failures, 14).isEmpty() == failures.isEmpty(), "failures have words");
    mustHold(sentencesFor(failures).isEmpty() == failures.isEmpty(), "failures have sentences");
    mustHold(sentencesFor(failures).size() <= maxPins + 1, "sentences are bounded");
}

void checkPins(const LogicReport &report) {
    const qsizetype pins = report.headers.value_or(QStringList()).size();
    mustHold(worstOfPins(report).size() == (report.rows.isEmpty() ? 0 : pins),
             "each header is a pin");
    mustHold(!plainTable(report).contains(u'\x1b'), "a plain table has no colours");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QString text = QString::fromUtf8(FuzzInput(data, size).rest());
    const LogicReport report = parseLogicReport(text);
    checkFields(report);
    checkFailures(report);
    checkPins(report);
    const LogicReport twice = parseLogicReport(text + u'\n' + text);
    mustHold(twice.rows == report.rows + report.rows, "rows follow in order");
    mustHold(twice.title == report.title && twice.headers == report.headers,
             "the last title and header line count");
    return 0;
}
