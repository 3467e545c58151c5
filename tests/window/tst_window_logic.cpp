// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/WindowFixture.h"

#include "language/LogicReport.h"
#include "settings/SettingsKeys.h"
#include "support/FileHelpers.h"
#include "support/Privileges.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

/// The logic test, from the button to the red cells.
class TestWindowLogic : public QObject {
    Q_OBJECT

private slots:
    void good7400_showsItsTableAndVerdict();
    void bad7400_showsTheFailedFieldInRed();
    void wholeRows_everyTime_data();
    void wholeRows_everyTime();
    void results_vanishWhenTheTabIsLeftOrAControlChanges();
    void unreadableReport_leavesTheRowsEmptyAndTheHeaders_data();
    void unreadableReport_leavesTheRowsEmptyAndTheHeaders();
    void largestReport_isShown();
    void longestLines_keepTheWidth();
    void cutReport_isNoSuccess_data();
    void cutReport_isNoSuccess();
    void olderReport_isNotShown();
    void unreadableReport_isNotShownAgain();
    void reportWithoutATitle_keepsTheHeading();
    void rowsOfAnyLength_areShown();
    void rowsOfEveryLength_areShown();
    void onlyTheLogicTest_touchesTheResultsFile();

private:
    static void test(WindowFixture &velm, const QString &device);
};

void TestWindowLogic::test(WindowFixture &velm, const QString &device) {
    velm.settings().setValue(settingsKeys::device, device);
    velm.click(velm.controls().btn_logic);
    velm.settle();
}

void TestWindowLogic::good7400_showsItsTableAndVerdict() {
    WindowFixture velm;
    velm.start();
    test(velm, QStringLiteral("7400"));
    QCOMPARE(velm.controls().tabview->selectedTabViewItem().identifier, logicTabIdentifier());
    QCOMPARE(velm.controls().peeping_at->text(), QStringLiteral("Logic test successful."));
    QCOMPARE(velm.controls().tableview->model()->rowCount(), 5);
    QCOMPARE(velm.row(0), QStringLiteral(" 1 2 3 4 5 6 7 8 9 10 11 12 13 14   "));
    QCOMPARE(velm.row(1), QStringLiteral("0000: 0 0 H 0 0 H G H 0 0 H 0 0 V   "));
    QCOMPARE(velm.row(4), QStringLiteral("0003: 1 1 L 1 1 L G L 1 1 L 1 1 V   "));
    QCOMPARE(velm.log
                 .startingWith(QStringLiteral("we have successfully obtained the chip test"
                                              " results! "))
                 .size(),
             1);
    QCOMPARE(velm.log.count(QStringLiteral("parser found Logic test row - setting peeping_at")), 1);
}

void TestWindowLogic::bad7400_showsTheFailedFieldInRed() {
    WindowFixture velm;
    velm.start();
    qputenv("MINIPRO_SIM_FAULT", "bad-logic-pins");
    test(velm, QStringLiteral("7400"));
    QVERIFY2(velm.controls().peeping_at->text().startsWith(u"Logic test failed: "),
             qPrintable(velm.controls().peeping_at->text()));
    int failed = 0;
    const GridModel *model = velm.controls().tableview->gridModel();
    for (int row = 1; row < model->rowCount(); ++row)
        for (int column = 0; column < gridColumns; ++column)
            if (model->index(row, column).data(GridModel::FailedRole).toBool()) {
                ++failed;
                QVERIFY(QStringLiteral("HL").contains(velm.cell(row, column)));
            }
    QVERIFY(failed > 0);
    QVERIFY(velm.controls().peeping_at->text().contains(QString::number(failed)));
}

void TestWindowLogic::wholeRows_everyTime_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<int>("vectors");
    QTest::newRow("a good gate") << QStringLiteral("7400") << QByteArray() << 4;
    QTest::newRow("a bad gate") << QStringLiteral("7400") << QByteArray("bad-logic-pins") << 4;
    QTest::newRow("a good part of 40 pins") << QStringLiteral("6821") << QByteArray() << 33;
    QTest::newRow("a bad part of 40 pins")
        << QStringLiteral("6821") << QByteArray("bad-logic-pins") << 33;
}

// The verdict comes on the other stream, at any moment: it must never land inside a row.
void TestWindowLogic::wholeRows_everyTime() {
    constexpr int runs = 50;
    QFETCH(QString, device);
    QFETCH(QByteArray, fault);
    QFETCH(int, vectors);
    WindowFixture velm;
    velm.start();
    qputenv("MINIPRO_SIM_FAULT", fault);
    QStringList firstTable;
    for (int run = 0; run < runs; ++run) {
        test(velm, device);
        QStringList table;
        for (int row = 0; row < velm.controls().tableview->model()->rowCount(); ++row)
            table.append(velm.row(row));
        if (run == 0)
            firstTable = table;
        QCOMPARE(table.size(), vectors + 1);
        QVERIFY2(table.first().startsWith(u" 1 2 3 4 "), qPrintable(table.first()));
        QVERIFY2(!table.last().trimmed().endsWith(u':'), qPrintable(table.last()));
        QCOMPARE(table, firstTable);
        QVERIFY(velm.controls().peeping_at->text().startsWith(u"Logic test "));
    }
}

void TestWindowLogic::results_vanishWhenTheTabIsLeftOrAControlChanges() {
    WindowFixture velm;
    velm.start();
    test(velm, QStringLiteral("7400"));
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    QVERIFY(velm.state().logictest_rows.isEmpty());
    QCOMPARE(velm.controls().peeping_at->text(), QString());
    QCOMPARE(velm.controls().tableview->model()->rowCount(), 1);
    test(velm, QStringLiteral("7400"));
    QCOMPARE(velm.state().logictest_rows.size(), 4);
    velm.click(velm.controls().btn_pad_00);
    velm.settle();
    QVERIFY(velm.state().logictest_rows.isEmpty());
    QCOMPARE(velm.controls().peeping_at->text(), QString());
}

void TestWindowLogic::unreadableReport_leavesTheRowsEmptyAndTheHeaders_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("remark");
    QTest::newRow("nothing printed") << QByteArray("exit 0\n") << QString();
    QTest::newRow("not UTF-8") << QByteArray("printf '      1 2\\n0000: \\377\\n'\n")
                               << QStringLiteral("could not be read: Not valid UTF-8 text.");
    QTest::newRow("beyond the limit")
        << "head -c " + QByteArray::number(largestReport + 1) + " /dev/zero | tr '\\0' 0\n"
        << QStringLiteral("Its report is larger than 1 MiB and is not shown.");
    QTest::newRow("a long title")
        << "printf 'Logic test'; head -c " + QByteArray::number(mebibyte - 10) +
               " /dev/zero | tr '\\0' x\n"
        << QStringLiteral("Its report could not be read: A line of more than 4,096 characters.");
    QTest::newRow("a folder in its place")
        << QByteArray("mkdir temp_logtest.bin; echo 0000: 1\n")
        << QStringLiteral("Its report could not be read: Is a directory.");
    QTest::newRow("a pipe in its place") << QByteArray("mkfifo temp_logtest.bin; echo 0000: 1\n")
                                         << QStringLiteral("Its report could not be read: ");
}

void TestWindowLogic::unreadableReport_leavesTheRowsEmptyAndTheHeaders() {
    QFETCH(QByteArray, script);
    QFETCH(QString, remark);
    WindowFixture velm;
    velm.start();
    test(velm, QStringLiteral("7400"));
    const QStringList headers = velm.state().logictest_headers;
    QCOMPARE(headers.size(), 14);
    velm.useTool(script);
    velm.log.take();
    velm.click(velm.controls().btn_logic);
    velm.settle();
    QVERIFY(velm.state().logictest_rows.isEmpty());
    QCOMPARE(velm.state().logictest_headers, headers);
    QCOMPARE(velm.log.startingWith(QStringLiteral("error reading temp file: ")).size(), 1);
    QCOMPARE(velm.controls().tableview->model()->rowCount(), 1);
    QVERIFY(!velm.message().isEmpty());
    QCOMPARE(velm.message().contains(u"Its report"), !remark.isEmpty());
    QVERIFY2(velm.message().contains(remark), qPrintable(velm.message()));
}

void TestWindowLogic::largestReport_isShown() {
    WindowFixture velm;
    const QByteArray line = QByteArray("0000: ").append(QByteArray(58, '1')).append('\n');
    const qsizetype lines = largestReport / line.size();
    const QString report = velm.write(
        QStringLiteral("report"),
        line.repeated(lines).append(QByteArray(largestReport - lines * line.size(), 'x')));
    velm.useTool("cat '" + report.toUtf8() + "'\n");
    velm.start();
    velm.click(velm.controls().btn_logic);
    QCOMPARE(velm.state().logictest_rows.size(), lines);
    QVERIFY2(!velm.message().contains(u"Its report"), qPrintable(velm.message()));
}

void TestWindowLogic::longestLines_keepTheWidth() {
    WindowFixture velm;
    const QByteArray title = QByteArray("Logic test ").leftJustified(longestReportLine, 'x');
    const QByteArray header = QByteArray("      1 ").leftJustified(longestReportLine, '2');
    const QByteArray row = QByteArray("0000: 1 ").leftJustified(longestReportLine, 'H');
    const QString report =
        velm.write(QStringLiteral("report"), title + '\n' + header + '\n' + row + '\n');
    velm.useTool("cat '" + report.toUtf8() + "'\n");
    velm.start();
    const int width = velm.controls().dataPane->minimumSizeHint().width();
    velm.click(velm.controls().btn_logic);
    velm.settle();
    QCOMPARE(velm.controls().peeping_at->text(), QString::fromLatin1(title));
    QCOMPARE(velm.state().logictest_rows.size(), 1);
    QCOMPARE(velm.controls().dataPane->minimumSizeHint().width(), width);
}

void TestWindowLogic::cutReport_isNoSuccess_data() {
    QTest::addColumn<QByteArray>("end");
    QTest::addColumn<RunOutcome::Verdict>("verdict");
    QTest::newRow("a good chip") << QByteArray("echo Logic test successful. >&2\n")
                                 << RunOutcome::Verdict::Qualified;
    QTest::newRow("a bad chip")
        << QByteArray("echo Logic test failed: 2 errors encountered. >&2; exit 1\n")
        << RunOutcome::Verdict::Failed;
}

void TestWindowLogic::cutReport_isNoSuccess() {
    QFETCH(QByteArray, end);
    WindowFixture velm;
    velm.useTool("for i in 00 01 02 03 04 05 06 07 08 09; do\n"
                 "echo \"00$i: 1  1  1  1  1  1  1  G\"; done\n" +
                 end);
    velm.start();
    {
        const FileSizeLimit fullDisk(100);
        velm.click(velm.controls().btn_logic);
    }
    velm.settle();
    QCOMPARE(WindowFixture::bytesOf(velm.temporary(QStringLiteral("temp_logtest.bin"))).size(),
             100);
    QTEST(velm.velm().runs().last().outcome.verdict, "verdict");
    QCOMPARE(velm.velm().runs().last().report, RunRecord::Report::Cut);
    QVERIFY2(velm.message().contains(QStringLiteral(
                 "Its report is not whole, it could not be written: File too large.")),
             qPrintable(velm.message()));
}

void TestWindowLogic::olderReport_isNotShown() {
    WindowFixture velm;
    velm.useTool("echo '0000: 1  1  1  1  1  1  1  G'; echo Logic test successful. >&2\n");
    velm.start();
    const QString report = velm.temporary(QStringLiteral("temp_logtest.bin"));
    QVERIFY(QDir().mkpath(QFileInfo(report).path()));
    QVERIFY(writeWholeFile(report, "0000: 0- 1  1  1  1  1  1  G\n"));
    const QByteArray folder = QFile::encodeName(QFileInfo(report).path());
    QCOMPARE(::chmod(QFile::encodeName(report).constData(), 0444), 0);
    QCOMPARE(::chmod(folder.constData(), 0555), 0);
    QCOMPARE(::chmod(QFile::encodeName(velm.path(QString())).constData(), 0755), 0);
    {
        const UnprivilegedUser user;
        QVERIFY(user.isValid());
        velm.click(velm.controls().btn_logic);
    }
    velm.settle();
    QCOMPARE(velm.state().logictest_rows, QList<QStringList>());
    QCOMPARE(velm.velm().runs().last().outcome.verdict, RunOutcome::Verdict::Qualified);
    QVERIFY2(velm.message().contains(u"Its report is not whole"), qPrintable(velm.message()));
    QVERIFY2(!velm.message().contains(u"pin"), qPrintable(velm.message()));
    QCOMPARE(::chmod(folder.constData(), 0755), 0);
}

void TestWindowLogic::unreadableReport_isNotShownAgain() {
    WindowFixture velm;
    velm.useTool("printf '0000: \\377\\n'\n");
    velm.start();
    int resets = 0;
    velm.whileBusy([&] {
        QObject::connect(velm.controls().tableview->model(), &QAbstractItemModel::modelReset,
                         &velm.velm(), [&] { ++resets; });
    });
    velm.click(velm.controls().btn_logic);
    velm.settle();
    QCOMPARE(velm.log.startingWith(QStringLiteral("error reading temp file: ")).size(), 1);
    QCOMPARE(resets, 0);
    velm.useTool("printf '0000: 1\\n'\n");
    velm.delegate().go(velm.controls().btn_logic);
    QCOMPARE(resets, 2); // emptied before the run, filled after it
}

void TestWindowLogic::reportWithoutATitle_keepsTheHeading() {
    WindowFixture velm;
    velm.start();
    test(velm, QStringLiteral("7400"));
    velm.useTool("printf '      1 2\\n0000: 0 1\\n'\n");
    velm.delegate().go(velm.controls().btn_logic);
    QCOMPARE(velm.state().logictest_rows.size(), 1);
    QCOMPARE(velm.controls().peeping_at->text(), QStringLiteral("Logic test successful."));
}

void TestWindowLogic::rowsOfAnyLength_areShown() {
    WindowFixture velm;
    velm.start();
    velm.useTool("printf '      1 2 3\\n0000: a b c d e\\n0001:\\n0'; seq -s ' ' 1 200; echo\n");
    velm.click(velm.controls().btn_logic);
    velm.settle();
    QCOMPARE(velm.row(1), QStringLiteral("0000: a b c              "));
    QCOMPARE(velm.row(2), QStringLiteral("0001:                 "));
    QCOMPARE(velm.row(3), QStringLiteral("01 2 3 4              "));
}

void TestWindowLogic::rowsOfEveryLength_areShown() {
    constexpr int maxFields = 200;
    QByteArray report = "      1 2 3\n";
    for (int fields = 0; fields <= maxFields; ++fields)
        report += "0:" + QByteArray(" \x1b[0;91mL-").repeated(fields) + '\n';
    WindowFixture velm;
    velm.start();
    velm.useTool("cat '" + QFile::encodeName(velm.write(QStringLiteral("report"), report)) + "'\n");
    velm.click(velm.controls().btn_logic);
    velm.settle();
    QCOMPARE(velm.controls().tableview->model()->rowCount(), maxFields + 2);
    for (int fields = 0; fields <= maxFields; ++fields)
        QCOMPARE(velm.row(fields + 1).count(u'L'), std::min(fields, 3));
    velm.controls().tableview->scrollToBottom();
    QVERIFY(!velm.controls().tableview->grab().isNull());
}

void TestWindowLogic::onlyTheLogicTest_touchesTheResultsFile() {
    WindowFixture velm;
    velm.start();
    const QString report = velm.write(velm.temporary(QStringLiteral("temp_logtest.bin")), "kept");
    velm.click(velm.controls().btn_read);
    velm.click(velm.controls().btn_verify);
    QCOMPARE(WindowFixture::bytesOf(report), QByteArray("kept"));
    test(velm, QStringLiteral("7400"));
    QVERIFY(!WindowFixture::bytesOf(report).contains("kept"));
}

QTEST_MAIN(TestWindowLogic)
#include "tst_window_logic.moc"
