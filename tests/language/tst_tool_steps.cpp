// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/ToolReportReader.h"
#include "support/FileHelpers.h"

#include <QTest>

/// How far a run has come is read from what the tool prints, at any moment and in both of its
/// dialects.
class TestToolSteps : public QObject {
    Q_OBJECT

private slots:
    void phases_followTheTool_data();
    void phases_followTheTool();
    void progress_neverGoesBack_data();
    void progress_neverGoesBack();
    void percentages_areTheTools_data();
    void percentages_areTheTools();
    void otherWords_areNoStep_data();
    void otherWords_areNoStep();
};

namespace {

QString captured(const QString &name) {
    return QString::fromUtf8(readWholeFile(QStringLiteral(TOOL_CAPTURES "/") + name));
}

/// A step that counts to its end, as the tool prints it.
QString counted(const QString &step) {
    QString text;
    for (int percent = 0; percent < 100; ++percent)
        text += QStringLiteral("\r\x1b[K%1  %2%").arg(step).arg(percent, 2);
    return text + QStringLiteral("\r\x1b[K%1  0.47Sec  OK\n").arg(step);
}

QString newDialectWrite() {
    return QStringLiteral("\r\x1b[KErasing... \r\x1b[KErasing... 12 ms  OK\n") +
           counted(QStringLiteral("Writing Code...")) + counted(QStringLiteral("Reading Code...")) +
           QStringLiteral("Verification OK\n");
}

QString microcontroller() {
    return counted(QStringLiteral("Reading Code...")) + counted(QStringLiteral("Reading Data...")) +
           counted(QStringLiteral("Reading User...")) +
           QStringLiteral("Reading config... 0.01Sec  OK\n");
}

QString nameOf(RunPhase phase) {
    switch (phase) {
    case RunPhase::Starting:
        return QStringLiteral("starting");
    case RunPhase::Erasing:
        return QStringLiteral("erasing");
    case RunPhase::Reading:
        return QStringLiteral("reading");
    case RunPhase::Writing:
        return QStringLiteral("writing");
    case RunPhase::Verifying:
        return QStringLiteral("verifying");
    case RunPhase::Protecting:
        return QStringLiteral("protecting");
    case RunPhase::Testing:
        return QStringLiteral("testing");
    }
    return {};
}

ToolReportReader readerOf(Operation operation) {
    ToolReportReader reader;
    reader.setOperation(operation);
    return reader;
}

/// What the run was seen doing, each step once.
QStringList phasesOf(Operation operation, const QString &text) {
    ToolReportReader reader = readerOf(operation);
    QStringList phases;
    for (const QChar unit : text) {
        reader.take(QStringView(&unit, 1));
        const RunProgress now = reader.progress();
        const QString phase = (nameOf(now.phase) + u' ' + now.part).trimmed();
        if (phases.isEmpty() || phases.last() != phase)
            phases.append(phase);
    }
    return phases;
}

void textsOfRuns() {
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("phases");
    QTest::addColumn<double>("end");
    QTest::newRow("Read") << ReadOperation << captured(QStringLiteral("read-AT28C256-ok.stderr"))
                          << "starting, reading Code" << 0.9;
    QTest::newRow("Write") << WriteOperation << captured(QStringLiteral("write-AT28C256-ok.stderr"))
                           << "starting, erasing, writing Code, verifying Code" << 1.0;
    QTest::newRow("Write, newer") << WriteOperation << newDialectWrite()
                                  << "starting, erasing, writing Code, verifying Code" << 1.0;
    QTest::newRow("Write without erasing")
        << WriteOperation
        << counted(QStringLiteral("Writing Code...")) + counted(QStringLiteral("Reading Code..."))
        << "starting, writing Code, verifying Code" << 1.0;
    QTest::newRow("Write of a protected chip")
        << WriteOperation
        << QStringLiteral("Erasing... 0.02Sec OK\nProtect off...0.01Sec OK\n") +
               counted(QStringLiteral("Writing  Code...")) +
               QStringLiteral("Protect on...0.01Sec OK\n") +
               counted(QStringLiteral("Reading Code..."))
        << "starting, erasing, protecting off, writing Code, protecting on, verifying Code" << 1.0;
    QTest::newRow("Verify") << VerifyOperation
                            << captured(QStringLiteral("verify-AT28C256-ok.stderr"))
                            << "starting, verifying Code" << 1.0;
    QTest::newRow("more than code") << ReadOperation << microcontroller()
                                    << "starting, reading Code, reading Data, reading User, "
                                       "reading config"
                                    << 0.9999;
}

} // namespace

void TestToolSteps::phases_followTheTool_data() {
    textsOfRuns();
    QTest::newRow("Logic test") << LogicOperation
                                << captured(QStringLiteral("logic-7400-ok.stderr")) << "testing"
                                << 0.0;
    QTest::newRow("no programmer")
        << ReadOperation << captured(QStringLiteral("no-programmer.stderr")) << "starting" << 0.0;
}

void TestToolSteps::phases_followTheTool() {
    QFETCH(Operation, operation);
    QFETCH(QString, text);
    QTEST(phasesOf(operation, text).join(QStringLiteral(", ")), "phases");
}

void TestToolSteps::progress_neverGoesBack_data() {
    textsOfRuns();
    QTest::newRow("a line that only began like an ended step")
        << WriteOperation << "Writing Code... OK, then nothing\n"
        << "" << 0.05;
    QTest::newRow("trouble behind a count")
        << VerifyOperation << "Reading Code...  50%Overcurrent protection!\a"
        << "" << 0.5;
}

void TestToolSteps::progress_neverGoesBack() {
    QFETCH(Operation, operation);
    QFETCH(QString, text);
    QFETCH(double, end);
    ToolReportReader reader = readerOf(operation);
    double before = 0;
    for (const QChar unit : text) {
        reader.take(QStringView(&unit, 1));
        const double now = reader.progress().done.value_or(before);
        QVERIFY2(now >= before && now <= 1, qPrintable(QString::number(now)));
        before = now;
    }
    QCOMPARE(before, end);
}

void TestToolSteps::percentages_areTheTools_data() {
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("done");
    QTest::newRow("half of a Verify") << VerifyOperation << "Reading Code...  50%" << 0.5;
    QTest::newRow("a number that is still coming")
        << VerifyOperation << "Reading Code...  5" << 0.0;
    QTest::newRow("half of a Read") << ReadOperation << "\x1b[KReading Code...  50%" << 0.45;
    QTest::newRow("written") << WriteOperation << "Writing Code...  1.29Sec  OK\n" << 0.6;
    QTest::newRow("half read back")
        << WriteOperation << "Writing Code...  1.29Sec  OK\nReading Code...  50%" << 0.8;
    QTest::newRow("no percentage") << VerifyOperation << "Reading Code...  900%" << 0.0;
}

void TestToolSteps::percentages_areTheTools() {
    QFETCH(Operation, operation);
    QFETCH(QString, text);
    ToolReportReader reader = readerOf(operation);
    reader.take(text);
    QTEST(reader.progress().done.value_or(-1), "done");
}

void TestToolSteps::otherWords_areNoStep_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << "";
    QTest::newRow("banner") << "Found TL866II+ 04.2.132 (0x284)\n";
    QTest::newRow("no dots") << "Reading is fun\n";
    QTest::newRow("other verb") << "Loading Code...  12%\n";
}

void TestToolSteps::otherWords_areNoStep() {
    QFETCH(QString, text);
    ToolReportReader reader = readerOf(WriteOperation);
    reader.take(text);
    QVERIFY(reader.progress().phase == RunPhase::Starting);
    QVERIFY(!reader.progress().done);
}

QTEST_GUILESS_MAIN(TestToolSteps)
#include "tst_tool_steps.moc"
