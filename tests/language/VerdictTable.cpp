// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "VerdictTable.h"

#include "language/ToolReportReader.h"
#include "support/FileHelpers.h"

#include <QMap>

namespace {

QString withControls(QString text) {
    return text.replace(QStringLiteral("\\r"), QStringLiteral("\r"))
        .replace(QStringLiteral("\\n"), QStringLiteral("\n"))
        .replace(QStringLiteral("\\e"), QStringLiteral("\x1b"))
        .replace(QStringLiteral("\\a"), QStringLiteral("\a"));
}

UsbProgrammer programmer(UsbProgrammer::Access access) {
    return {QStringLiteral("TL866II+, T48 or T56"), QStringLiteral("a466"), QStringLiteral("0a53"),
            QStringLiteral("/dev/bus/usb/001/007"), access};
}

/// One of the facts of a row, as "status 0" or "device AT28C256"; false if nobody knows it.
bool takeFact(const QString &fact, RunFacts &facts) {
    static const QMap<QString, Operation> operations = {
        {QStringLiteral("Read"), ReadOperation},
        {QStringLiteral("Verify"), VerifyOperation},
        {QStringLiteral("Write"), WriteOperation},
        {QStringLiteral("Logic test"), LogicOperation}};
    using Programmers = QList<UsbProgrammer>;
    using Access = UsbProgrammer::Access;
    static const QMap<QString, Programmers> pluggedIn = {
        {QStringLiteral("nothing"), {}},
        {QStringLiteral("refused"), {programmer(Access::Granted), programmer(Access::Refused)}},
        {QStringLiteral("without node"), {programmer(Access::NoNode)}},
        {QStringLiteral("usable"), {programmer(Access::Granted)}}};

    const QString key = fact.section(u' ', 0, 0);
    const QString value = fact.section(u' ', 1);
    if (operations.contains(fact))
        facts.operation = operations[fact];
    else if (key == u"status")
        facts.status = value.toInt();
    else if (key == u"signal")
        facts.killedBySignal = (facts.status = value.toInt()) != 0;
    else if (fact == u"stopped")
        facts.stopRequested = true;
    else if (key == u"device")
        facts.device = value;
    else if (key == u"tool")
        facts.tool = value;
    else if (key == u"image")
        facts.imageLength = value.toLongLong();
    else if (fact == u"file not shown")
        facts.imageIsShown = false;
    else if (fact == u"looks like Intel HEX")
        facts.encoding = ImageEncoding::IntelHex;
    else if (fact == u"looks like S-record")
        facts.encoding = ImageEncoding::SRecord;
    else if (fact == u"has data memory")
        facts.known.data = true;
    else if (fact == u"has fuses")
        facts.known.fuses = true;
    else if (key == u"plugged" && pluggedIn.contains(value))
        facts.programmers = pluggedIn[value];
    else
        return false;
    return true;
}

RunFacts usualFacts() {
    RunFacts facts;
    facts.tool = QStringLiteral("/opt/minipro");
    facts.device = QStringLiteral("AT28C256");
    facts.imagePath = QStringLiteral("/home/me/temp.bin");
    return facts;
}

/// Reads the file line by line.
class Table {
public:
    void take(const QString &line);
    QList<VerdictRow> finished() {
        close();
        return rows_;
    }

private:
    void close();
    void takeFacts(const QString &words);
    void takeWords(const QString &words, ToolStream stream);
    void cannotRead(const QString &line);

    QMap<QString, QString> pieces_;
    QList<VerdictRow> rows_;
    ToolReportReader reader_;
    QStringList shown_;
};

void Table::take(const QString &line) {
    const QString words = line.mid(2);
    if (line.startsWith(u"= ")) {
        close();
        rows_.append({words, usualFacts(), {}});
    } else if (line.startsWith(u"{")) {
        pieces_[line.section(QStringLiteral(" = "), 0, 0)] =
            withControls(line.section(QStringLiteral(" = "), 1));
    } else if (line.startsWith(u"? ")) {
        takeFacts(words);
    } else if (line.startsWith(u"< ")) {
        takeWords(words, ToolStream::Error);
    } else if (line.startsWith(u"1 ")) {
        takeWords(words, ToolStream::Output);
    } else if (line.startsWith(u"> ")) {
        shown_.append(words);
    } else if (!line.isEmpty() && !line.startsWith(u'#')) {
        cannotRead(line);
    }
}

void Table::takeFacts(const QString &words) {
    for (const QString &fact : words.split(QStringLiteral(", ")))
        if (!takeFact(fact, rows_.last().facts))
            cannotRead(fact);
}

void Table::takeWords(const QString &words, ToolStream stream) {
    reader_.take(pieces_.contains(words) ? pieces_[words] : withControls(words) + u'\n', stream);
}

void Table::cannotRead(const QString &line) {
    rows_.append({QStringLiteral("a line that can be read"), usualFacts(), line});
}

void Table::close() {
    if (!rows_.isEmpty()) {
        rows_.last().facts.report = reader_.report();
        rows_.last().shown = shown_.join(u" | ");
    }
    reader_ = {};
    shown_.clear();
}

} // namespace

QList<VerdictRow> verdictRows(const QString &path) {
    Table table;
    for (const QString &line : QString::fromUtf8(readWholeFile(path)).split(u'\n'))
        table.take(line);
    return table.finished();
}

QString shownOf(const RunOutcome &outcome) {
    static const char *const names[] = {"Succeeded", "Qualified", "Failed", "Stopped",
                                        "NotStarted"};
    QStringList shown = {QLatin1String(names[int(outcome.verdict)]), outcome.sentence};
    if (!outcome.nextStep.isEmpty())
        shown.append(outcome.nextStep);
    return shown.join(u" | ");
}
